// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <optional>

#include "stockbook/sheet/geometry/geometry.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::com {

// Screen readers know the cells of a sheet by numbers from 1 on: first the captions, one for each shown column, and
// after them the cells row by row (see sheet::TableAccess). A number is valid until the next change of the sheet.

// The number of the cell; row -1 is the column's caption. CHILDID_SELF, which is the sheet, if it is not in the table.
LONG ChildIdOf(sheet::View& view, const sheet::CellPosition& cell);
// The cell of the number, or the caption at {-1, column}; nothing if there is none.
std::optional<sheet::CellPosition> CellOfChild(sheet::View& view, LONG child);
LONG ChildCountOf(sheet::View& view);

}  // namespace stockbook::com
