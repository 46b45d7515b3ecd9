// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/decimal_text.h"
#include "stockbook/base/api.h"

namespace stockbook::base {

// The number in units of 1/10,000 when it is the double of a decimal with so few decimals and at most 15 digits, as
// prices, quantities and amounts nearly all are; such a decimal is the number's own shortest text.
STOCKBOOK_API std::optional<int64_t> ShortDecimalUnits(double number);

// A decimal number as its digits: 0.d1d2d3... x 10^whole, without leading or trailing zeros among the digits; no digits
// is zero. Rounding works on the digits and never passes through a double. A plain value; operations are O(digits).
struct STOCKBOOK_API Decimal {
  bool negative = false;
  std::string digits;
  int whole = 0;  // how many of the digits come before the point; may be negative or beyond the last digit

  static Decimal FromInteger(int64_t number);
  // `units` of 10^-decimals.
  static Decimal FromScaled(int64_t units, int decimals);
  // The shortest decimal of at most 15 significant digits; nothing for NaN and infinities.
  static std::optional<Decimal> FromDouble(double number);
  // The number that a text spells, digit for digit; nothing for what ParseNumber refuses.
  static std::optional<Decimal> Parse(std::string_view text);
  // The number taken apart already; its exponent must fit into `whole`.
  static Decimal FromText(const DecimalText& text);

  bool IsZero() const { return digits.empty(); }
  // Rounds half away from zero to `decimals` digits after the point (zero or more).
  void RoundTo(int decimals);
  // Times 10^power, then rounded to the decimals; what rounds to zero loses its sign.
  Decimal Shown(int power, int decimals) const;
  // The digits before the point, none for zero.
  std::string WholeDigits() const;
  // Exactly `decimals` digits after the point, cut and not rounded.
  std::string FractionDigits(int decimals) const;

 private:
  void Normalise();
};

}  // namespace stockbook::base
