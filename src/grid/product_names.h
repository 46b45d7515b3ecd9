// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "stockbook/platform/grid_busy.h"
#include "stockbook/platform/grid_table.h"

namespace stockbook::grid {

// The bare product name of the row (its hidden data), followed by a blank and those of model, [standard] and (unit)
// whose column is hidden and whose cell is not empty: "六角螺栓 M8[GB5783](个)", a hexagon bolt of model M8, standard
// GB5783, counted in pieces.
std::string ComposeProductName(const platform::GridTable& grid, int row);

// Recomposes the shown product name of every row with a positive product key, with the grid marked busy
// ("Refresh_ProductNames") and redraw off. One pass over the records; each distinct name is composed once.
void RefreshProductNames(platform::GridTable& grid, platform::GridBusy& busy);

}  // namespace stockbook::grid
