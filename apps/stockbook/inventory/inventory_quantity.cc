// SPDX-License-Identifier: MIT
#include "stockbook/inventory/inventory_quantity.h"

#include <charconv>
#include <string>

#include "base/wide_integer.h"

namespace stockbook::app {
namespace {

using base::DivideHalfToEven;
using base::WideInteger;

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
  const WideInteger product = static_cast<WideInteger>(quantity.millionths()) * price.digits;
  const int surplus = Quantity::kDecimals + price.scale - base::Money::kDecimals;
  return base::MoneyOfUnits(DivideHalfToEven(product, base::WidePowerOfTen(surplus)));
}

base::Money PercentOf(base::Money amount, int percent) {
  return base::MoneyOfUnits(DivideHalfToEven(static_cast<WideInteger>(amount.units()) * percent, 100));
}

base::Money UnitPriceOf(base::Money amount, Quantity quantity) {
  if (quantity.IsZero()) return {};
  const WideInteger sign = quantity.millionths() < 0 ? -1 : 1;
  const WideInteger numerator = sign * amount.units() * WideInteger{Quantity::kScale};
  return base::MoneyOfUnits(DivideHalfToEven(numerator, sign * quantity.millionths()));
}

}  // namespace stockbook::app
