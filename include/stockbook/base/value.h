// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "stockbook/base/api.h"
#include "stockbook/base/date.h"
#include "stockbook/base/money.h"

namespace stockbook::base {

// One value of a database field or a grid cell: nothing (null and empty alike), or a whole number, a double, money, a
// date or a text. Conversions never fail: a value that cannot be read as required gives the neutral value or nothing.
class STOCKBOOK_API Value {
 public:
  // What it can be, nothing first.
  using Variant = std::variant<std::monostate, int64_t, double, Money, Date, std::string>;

  Value() = default;
  // These keep the type: two values are equal only if both are of one type.
  explicit Value(int64_t number) : variant_(number) {}
  explicit Value(double number) : variant_(number) {}
  explicit Value(Money money) : variant_(money) {}
  explicit Value(Date date) : variant_(date) {}
  explicit Value(std::string text) : variant_(std::move(text)) {}

  // False for the empty text, which reads the same.
  bool IsNull() const { return std::holds_alternative<std::monostate>(variant_); }
  // For std::visit.
  const Variant& variant() const { return variant_; }
  // The value itself if it is of this type, one of those of Variant, else nullptr; converts nothing.
  template <typename Type>
  const Type* As() const {
    return std::get_if<Type>(&variant_);
  }

  // The default text: "" for nothing, NumberText, Money::Text, Date::Text, the text itself.
  std::string Text() const;
  // The number it is or spells; dates count days since the zero date. Nothing for null and for other texts.
  std::optional<double> Number() const;
  // As money, exact for integers, money and decimal texts; nothing when it is no number or out of range.
  std::optional<Money> AsMoney() const;
  // As a whole number; doubles round half to even; nothing when it is no number or out of range.
  std::optional<int64_t> AsInteger() const;
  // As a date: numbers are days since the zero date, to the second. Nothing for other texts than Date::Parse reads, and
  // outside of the years 100 to 9999.
  std::optional<Date> AsDate() const;

  bool operator==(const Value&) const = default;

 private:
  Variant variant_;
};

}  // namespace stockbook::base
