// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/platform/grid.h"

namespace stockbook::app {

// Writes beside the two numbers of each total row what they are, the period's total above the sum of all lines so far:
// into the remarks, which total rows leave empty, or into another column of texts if remarks are hidden. Does nothing
// where no such column is shown. Notes that stand elsewhere, of columns that were hidden or shown since, are taken
// away. O(periods).
void NoteTotals(platform::Grid& grid);

}  // namespace stockbook::app
