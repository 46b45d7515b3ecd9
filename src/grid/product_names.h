// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "platform/grid.h"

namespace stockbook::grid {

// The bare product name of the row (its hidden data) followed, for those of model, [standard] and (unit) whose column
// is hidden and whose cell is not empty, by a blank and them: "六角螺栓 M8[GB5783](个)".
std::string ComposeProductName(const platform::Grid& grid, int row);

// Recomposes the shown product name of every row with a positive product key, with the grid marked busy
// ("Refresh_ProductNames") and redraw off. One pass over the records, distinct names composed once.
void RefreshProductNames(platform::Grid& grid);

}  // namespace stockbook::grid
