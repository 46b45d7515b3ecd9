// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "journal/running_balance.h"
#include "stockbook/base/journal_type.h"
#include "stockbook/platform/grid_table.h"

namespace stockbook::journal {

// The records [begin, end) of one period, their sums, and the sums of all records up to the last of them.
struct PeriodTotals {
  std::string period;
  size_t begin = 0;
  size_t end = 0;
  MovementSums in_period;
  MovementSums in_all;
};

// Fills the stock columns of all records with their running values, which start from the opening totals, replacing what
// the statement delivered there. Returns the totals of each period in order; a new period begins wherever the text of
// `Period` changes. One pass over the columns. An amount outside the range of Money throws base::ArithmeticError and
// leaves the stock columns empty.
std::vector<PeriodTotals> ComputeRunningValues(const Totals& opening, base::tqJournalTypeContants type,
                                               platform::GridTable& grid);

// Empties the stock columns of all records. The statement delivers each line's own movement there, which would look
// like the stock if the running values were never computed.
void EmptyRunningValues(platform::GridTable& grid);

}  // namespace stockbook::journal
