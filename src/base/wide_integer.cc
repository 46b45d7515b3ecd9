// SPDX-License-Identifier: MIT
#include "base/wide_integer.h"

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

}  // namespace stockbook::base
