// SPDX-License-Identifier: MIT
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::sheet {

void GridSheet::SelectRange(int row, int column, int row_sel, int col_sel) {
  CheckCell("Select", row, column);
  CheckCell("Select", row_sel, col_sel);
  view_.ChangeSelection({{row, column}, {row_sel, col_sel}});
}

void GridSheet::SetTopRow(int row) {
  CheckRow("TopRow", row);
  view_.ScrollTo(view_.geometry().WithTopRow(row));
}

void GridSheet::SetLeftCol(int column) {
  CheckColumn("LeftCol", column);
  view_.ScrollTo(view_.geometry().WithLeftCol(column));
}

}  // namespace stockbook::sheet
