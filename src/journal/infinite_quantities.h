// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "journal/running_balance.h"
#include "journal/running_values.h"
#include "stockbook/platform/grid_table.h"

namespace stockbook::journal {

// A quantity without an end, or sums that have grown past all numbers, leave nothing to compute with from there on: the
// stock columns are blank or undefined for the rest of the journal. Says where that begins and what to do, for the
// user; "" for a journal of numbers. To be called when the running values have been computed. O(periods) unless there
// is something to say.
std::string DescribeInfiniteQuantity(const Totals& opening, const std::vector<PeriodTotals>& periods,
                                     const platform::GridTable& grid);

}  // namespace stockbook::journal
