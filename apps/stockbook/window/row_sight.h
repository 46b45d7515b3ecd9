// SPDX-License-Identifier: MIT
#pragma once

#include "sheet/grid_sheet.h"

namespace stockbook::app {

// Makes the cell the current one and scrolls to it, with the periods open that it lies in. Selecting a cell alone
// scrolls nowhere.
void BringIntoSight(sheet::GridSheet& sheet, int row, int column);

}  // namespace stockbook::app
