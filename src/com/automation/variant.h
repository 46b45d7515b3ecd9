// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "com/automation/com_ptr.h"
#include "stockbook/base/value.h"

namespace stockbook::com {

// Owns an automation value.
class Variant {
 public:
  Variant() = default;
  explicit Variant(const base::Value& value);
  explicit Variant(std::string_view text);
  explicit Variant(int16_t number);
  explicit Variant(int32_t number);
  explicit Variant(float number);
  explicit Variant(double number);
  explicit Variant(bool truth);
  // Adds a reference; null is an object variable without an object.
  explicit Variant(IDispatch* object);
  Variant(const char*) = delete;
  // Copies, following references.
  static Variant CopyOf(const VARIANT& other);

  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;
  Variant(Variant&& other) noexcept : Variant() { std::swap(variant_, other.variant_); }
  Variant& operator=(Variant&& other) noexcept {
    std::swap(variant_, other.variant_);
    return *this;
  }
  ~Variant() { VariantClear(&variant_); }

  const VARIANT& get() const { return variant_; }
  VARIANT& get() { return variant_; }
  // Where a function writes a value.
  VARIANT* Put() {
    VariantClear(&variant_);
    return &variant_;
  }
  // Hands the value over.
  VARIANT Detach();

 private:
  // All of it: whoever writes the type first must not find a value that was never there.
  VARIANT variant_{};
};

// Conversions by the rules of automation (a number is read from a text, a boolean is 0 or -1, doubles round half to
// even). What does not convert throws AutomationError: 13 for a type that does not match, 6 for an overflow.
int16_t ToShort(const VARIANT& value);
int32_t ToLong(const VARIANT& value);
float ToSingle(const VARIANT& value);
double ToDouble(const VARIANT& value);
bool ToBoolean(const VARIANT& value);
std::string ToText(const VARIANT& value);
// A number of 32 bits with or without a sign, as colours are written.
uint32_t ToBits(const VARIANT& value);
// The object, or nothing for Nothing, Null and Empty.
ComPtr<IDispatch> ToDispatch(const VARIANT& value);
// As the core keeps it: integers and booleans as whole numbers, currency exact, dates to the second, texts, nothing for
// Null, Empty and a missing argument.
base::Value ToValue(const VARIANT& value);

// Whether an optional argument was left out.
bool IsMissing(const VARIANT& value);

// The second nearest to an automation date, and back.
base::Date DateOfAutomation(DATE date);
DATE ToAutomationDate(const base::Date& date);

}  // namespace stockbook::com
