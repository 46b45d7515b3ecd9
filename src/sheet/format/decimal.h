// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace stockbook::sheet {

inline constexpr int kShortDecimals = 4;

// The number in units of 1/10,000 when it is the double of a decimal with so few decimals and at most 15 digits, as
// prices, quantities and amounts nearly all are; such a decimal is the number's own shortest text.
std::optional<int64_t> ShortDecimalUnits(double number);

// A decimal number taken apart for showing: 0.d1d2d3... x 10^whole, without leading or trailing zeros among the digits;
// no digits is zero. Rounding works on the digits and never passes through a double. A plain value.
struct Decimal {
  bool negative = false;
  std::string digits;
  int whole = 0;  // how many of the digits stand before the point; may be negative or beyond the last digit

  static Decimal FromInteger(int64_t number);
  // `units` of 10^-decimals.
  static Decimal FromScaled(int64_t units, int decimals);
  // The shortest decimal of at most 15 significant digits; nothing for NaN and infinities.
  static std::optional<Decimal> FromDouble(double number);
  // What base::ParseNumber accepts, digit for digit.
  static std::optional<Decimal> Parse(std::string_view text);

  bool IsZero() const { return digits.empty(); }
  // Rounded half away from zero to `decimals` digits behind the point (zero or more).
  void RoundTo(int decimals);
  // The digits before the point, none for zero.
  std::string WholeDigits() const;
  // Exactly `decimals` digits behind the point, cut and not rounded.
  std::string FractionDigits(int decimals) const;

 private:
  void Normalise();
};

}  // namespace stockbook::sheet
