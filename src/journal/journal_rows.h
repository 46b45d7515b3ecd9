// SPDX-License-Identifier: MIT
#pragma once

#include "platform/grid.h"
#include "platform/recordset.h"

namespace stockbook::journal {

// Moves the rows of a journal statement into a cleared grid. Every field becomes a column whose key is the field's
// name; the rows are grouped by `Period` under nodes captioned with the period. Without rows the grid is not touched.
void LayRows(platform::Recordset rows, platform::Grid& grid);

}  // namespace stockbook::journal
