// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "stockbook/platform/grid_table.h"

namespace stockbook::grid {

// Counts the rows that have a positive bill key by exact bill name: receipts, issues and transfers only. Returns five
// lines, or one sentence when there are no bills. A count beyond 32767 throws base::ArithmeticError.
std::string Statistics(const platform::GridTable& grid);

}  // namespace stockbook::grid
