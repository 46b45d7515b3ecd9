// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/base/api.h"
#include "stockbook/base/money.h"

namespace stockbook::base {

// Where the compiler has them: the databases need it, the rooms above them do not.
#ifdef __SIZEOF_INT128__

// Products of two 64-bit counts need 128 bits.
__extension__ using WideInteger = __int128;

// 10^exponent, for exponents from 0 to 38.
STOCKBOOK_API WideInteger WidePowerOfTen(int exponent);

// numerator / denominator, rounded half to even; the denominator is positive.
STOCKBOOK_API WideInteger DivideHalfToEven(WideInteger numerator, WideInteger denominator);

// The amount of that many 1/10,000 units; throws ArithmeticError if Money cannot hold it.
STOCKBOOK_API Money MoneyOfUnits(WideInteger units);

#endif

}  // namespace stockbook::base
