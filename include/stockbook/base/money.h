// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "stockbook/base/api.h"

namespace stockbook::base {

// A fixed-point or counted value has left its range. The message is one sentence for the user.
class STOCKBOOK_API ArithmeticError : public std::overflow_error {
 public:
  using std::overflow_error::overflow_error;
};

// An amount of money: a signed 64-bit count of 1/10,000 units, so four decimals are exact.
// Adding and subtracting are exact or throw ArithmeticError; nothing wraps. Conversions from double and from longer
// decimals round half to even. A plain value; every operation is O(1).
class STOCKBOOK_API Money {
 public:
  // Both say how exact an amount is: four decimals, 10000 units.
  static constexpr int kDecimals = 4;
  static constexpr int64_t kScale = 10000;

  constexpr Money() = default;
  // Any number of 1/10,000; exact.
  static constexpr Money FromUnits(int64_t units) { return Money(units); }
  // Whole currency units; throws ArithmeticError outside of +-922337203685477.
  static Money FromInteger(int64_t whole);
  // Nearest 1/10,000, half to even on the decimal digits; throws ArithmeticError for NaN, infinities and out of range.
  static Money FromDouble(double value);
  // Reads what ReadDecimal reads with grouping commas, as ParseNumber does; more than four decimals round half to even.
  // Nothing when the text is not a number, is out of range, or has an exponent that 32 bits do not hold.
  static std::optional<Money> Parse(std::string_view text);

  // In 1/10,000.
  constexpr int64_t units() const { return units_; }
  // Exactly: 0.0001 is not.
  constexpr bool IsZero() const { return units_ == 0; }
  // The nearest double: above 2^53 units not exact.
  double ToDouble() const { return static_cast<double>(units_) / static_cast<double>(kScale); }
  // Decimal text without trailing zeros: "12.5", "-0.0001", "0".
  std::string Text() const;

  // These are exact or throw ArithmeticError.
  Money operator+(Money other) const {
    int64_t sum = 0;
    if (__builtin_add_overflow(units_, other.units_, &sum)) ThrowOverflow();
    return Money(sum);
  }
  Money operator-(Money other) const {
    int64_t difference = 0;
    if (__builtin_sub_overflow(units_, other.units_, &difference)) ThrowOverflow();
    return Money(difference);
  }
  Money operator-() const { return Money() - *this; }
  Money& operator+=(Money other) { return *this = *this + other; }
  Money& operator-=(Money other) { return *this = *this - other; }
  constexpr auto operator<=>(const Money&) const = default;

  // Throws ArithmeticError.
  [[noreturn]] static void ThrowOverflow();

 private:
  constexpr explicit Money(int64_t units) : units_(units) {}
  int64_t units_ = 0;
};

}  // namespace stockbook::base
