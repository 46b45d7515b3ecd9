// SPDX-License-Identifier: MIT
#include "base/wide_integer.h"

#include <limits>

#ifdef __SIZEOF_INT128__

namespace stockbook::base {

WideInteger WidePowerOfTen(int exponent) {
  WideInteger power = 1;
  while (exponent-- > 0) power *= 10;
  return power;
}

WideInteger DivideHalfToEven(WideInteger numerator, WideInteger denominator) {
  const bool negative = numerator < 0;
  const WideInteger size = negative ? -numerator : numerator;
  WideInteger quotient = size / denominator;
  const WideInteger rest = size % denominator;
  const WideInteger to_next = denominator - rest;
  if (rest > to_next || (rest == to_next && quotient % 2 != 0)) ++quotient;
  return negative ? -quotient : quotient;
}

Money MoneyOfUnits(WideInteger units) {
  if (units > std::numeric_limits<int64_t>::max() || units < std::numeric_limits<int64_t>::min())
    Money::ThrowOverflow();
  return Money::FromUnits(static_cast<int64_t>(units));
}

}  // namespace stockbook::base

#endif
