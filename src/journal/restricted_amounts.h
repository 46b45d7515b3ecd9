// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/journal/amount_texts.h"
#include "stockbook/platform/grid_table.h"

namespace stockbook::journal {

// What cells show in place of restricted amounts.
inline constexpr const char* kAmountMask = "-";

// Shows the mask in the amount columns of all records. The amounts stay in the cells' hidden data. Other rows are not
// touched.
void MaskAmounts(platform::GridTable& grid);

}  // namespace stockbook::journal
