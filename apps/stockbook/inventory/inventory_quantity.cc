// SPDX-License-Identifier: MIT
#include "stockbook/inventory/inventory_quantity.h"

#include <charconv>
#include <limits>
#include <string>

namespace stockbook::app {
namespace {

// Products of two 64-bit counts need 128 bits.
__extension__ typedef __int128 Wide;

constexpr int kMoneyDecimals = 4;
constexpr int kQuantityDecimals = 6;

Wide PowerOfTen(int exponent) {
  Wide power = 1;
  while (exponent-- > 0) power *= 10;
  return power;
}

// numerator / denominator, half to even; the denominator is positive.
Wide DivideHalfToEven(Wide numerator, Wide denominator) {
  const bool negative = numerator < 0;
  const Wide size = negative ? -numerator : numerator;
  Wide quotient = size / denominator;
  const Wide rest = size % denominator;
  const Wide to_next = denominator - rest;
  if (rest > to_next || (rest == to_next && quotient % 2 != 0)) ++quotient;
  return negative ? -quotient : quotient;
}

base::Money Checked(Wide units) {
  if (units > std::numeric_limits<int64_t>::max() || units < std::numeric_limits<int64_t>::min())
    base::Money::ThrowOverflow();
  return base::Money::FromUnits(static_cast<int64_t>(units));
}

[[noreturn]] void ThrowQuantityOverflow() {
  throw base::ArithmeticError("A sum of quantities exceeds 9,223,372,036,854 units; look for wrong quantities.");
}

}  // namespace

Quantity Quantity::operator+(Quantity other) const {
  int64_t sum = 0;
  if (__builtin_add_overflow(millionths_, other.millionths_, &sum)) ThrowQuantityOverflow();
  return Quantity(sum);
}

Quantity Quantity::operator-(Quantity other) const {
  int64_t difference = 0;
  if (__builtin_sub_overflow(millionths_, other.millionths_, &difference)) ThrowQuantityOverflow();
  return Quantity(difference);
}

double ScaledDecimal::ToDouble() const {
  // Through its text, because dividing two doubles rounds twice if the digits need more than 53 bits.
  const std::string text = std::to_string(digits) + "e-" + std::to_string(scale);
  double number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

base::Money AmountOf(Quantity quantity, ScaledDecimal price) {
  const Wide product = static_cast<Wide>(quantity.millionths()) * price.digits;
  const int surplus = kQuantityDecimals + price.scale - kMoneyDecimals;
  return Checked(DivideHalfToEven(product, PowerOfTen(surplus)));
}

base::Money PercentOf(base::Money amount, int percent) {
  return Checked(DivideHalfToEven(static_cast<Wide>(amount.units()) * percent, 100));
}

base::Money UnitPriceOf(base::Money amount, Quantity quantity) {
  if (quantity.IsZero()) return {};
  const Wide sign = quantity.millionths() < 0 ? -1 : 1;
  const Wide numerator = sign * amount.units() * Wide{Quantity::kScale};
  return Checked(DivideHalfToEven(numerator, sign * quantity.millionths()));
}

}  // namespace stockbook::app
