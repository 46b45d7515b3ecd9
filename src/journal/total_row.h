// SPDX-License-Identifier: MIT
#pragma once

#include "journal/running_values.h"
#include "platform/grid.h"

namespace stockbook::journal {

// Inserts the total row of a period after its last record: each of the nine movement columns shows the sum of the
// period and, on a second line, the cumulative sum, both in the column's format. Throws platform::Error when the record
// is no longer in the grid.
void InsertTotalRow(const PeriodTotals& period, int height_twips, platform::Grid& grid);

}  // namespace stockbook::journal
