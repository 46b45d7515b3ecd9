// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/platform/grid_table.h"

namespace stockbook::journal {

// Empties the cells of records that say nothing: a zero receipt on a receipt row, a zero issue on an issue row, and
// zero dates (1899-12-30, the number 0, or a text of either). The hidden data stays. Columns that have no such cell
// cost one look at each of their blocks.
void BlankZeroCells(platform::GridTable& grid);

}  // namespace stockbook::journal
