// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/platform/grid_bulk.h"
#include "stockbook/platform/grid_cells.h"
#include "stockbook/platform/grid_columns.h"
#include "stockbook/platform/grid_rows.h"

namespace stockbook::platform {

// What a grid contains, whoever looks at it and however it looks.
class GridTable : public GridCells, public GridColumns, public GridRows, public GridBulk {};

}  // namespace stockbook::platform
