// SPDX-License-Identifier: MIT
#pragma once

#include "platform/grid_bulk.h"
#include "platform/grid_cells.h"
#include "platform/grid_columns.h"
#include "platform/grid_rows.h"

namespace stockbook::platform {

// What a grid contains, whoever looks at it and however it looks.
class GridTable : public GridCells, public GridColumns, public GridRows, public GridBulk {};

}  // namespace stockbook::platform
