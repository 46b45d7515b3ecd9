// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "platform/grid.h"

namespace stockbook::grid {

// Counts the rows with a positive bill key by the exact bill name: receipts, issues and transfers, and nothing else.
// Five lines, or one sentence where there are none. A count beyond 32767 throws base::ArithmeticError.
std::string Statistics(const platform::Grid& grid);

}  // namespace stockbook::grid
