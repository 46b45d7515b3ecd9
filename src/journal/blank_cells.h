// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "columns/column.h"

namespace stockbook::journal {

// The column with the zeros of the rows whose flag equals `flag` emptied; nothing when there are none. `flags` nullptr
// reads as all 0.
std::optional<columns::Column> WithoutZerosOf(const columns::Column& column, const columns::Column* flags, double flag);

// The column with its zero dates (1899-12-30, a number 0, or a text of either) emptied; nothing when there are none.
std::optional<columns::Column> WithoutZeroDates(const columns::Column& column);

}  // namespace stockbook::journal
