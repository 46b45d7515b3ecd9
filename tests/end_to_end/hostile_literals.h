// SPDX-License-Identifier: MIT
#pragma once

#include <span>

namespace stockbook::end_to_end {

// SQL literals of values that no program should write, and some do.
using LiteralList = std::span<const char* const>;

// Keys of bills and masters as lines name them, and as bills and masters spell their own.
LiteralList HostileKeys();
// Finite quantities, and texts that are none.
LiteralList HostileQuantities();
LiteralList EndlessQuantities();
// Amounts in the range of money, and texts that are none.
LiteralList HostileAmounts();
// At the ends of the range, and beyond.
LiteralList AmountsBeyond();
LiteralList HostileDates();
LiteralList HostileTexts();
// Short, because captions are made of them.
LiteralList HostilePeriods();

}  // namespace stockbook::end_to_end
