// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/platform/grid_table.h"

namespace stockbook::journal {

// Whether cells show amounts, or a mask because amounts are restricted.
enum class AmountTexts { kShown, kMasked };
inline constexpr const char* kAmountMask = "-";

// Shows the mask in the amount columns of all records. The amounts stay in the cells' hidden data. Other rows are not
// touched.
void MaskAmounts(platform::GridTable& grid);

}  // namespace stockbook::journal
