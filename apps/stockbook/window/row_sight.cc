// SPDX-License-Identifier: MIT
#include "stockbook/window/row_sight.h"

#include <vector>

namespace stockbook::app {
namespace {

// The nodes above the row are the last ones before it on each higher level.
void OpenPeriodsOf(sheet::GridSheet& sheet, int row) {
  std::vector<int> over;
  for (int node = sheet.NextSubtotal(sheet.FixedRows()); node >= 0 && node < row; node = sheet.NextSubtotal(node + 1)) {
    while (!over.empty() && sheet.RowOutlineLevel(over.back()) >= sheet.RowOutlineLevel(node)) over.pop_back();
    over.push_back(node);
  }
  for (const int node : over) {
    if (sheet.RowOutlineLevel(node) < sheet.RowOutlineLevel(row) && sheet.IsCollapsed(node))
      sheet.SetIsCollapsed(node, false);
  }
}

}  // namespace

void BringIntoSight(sheet::GridSheet& sheet, int row, int column) {
  OpenPeriodsOf(sheet, row);
  sheet.Select(row, column);
  // Whoever hears of the new cell may have changed the rows.
  if (row >= sheet.Rows() || column >= sheet.Cols()) return;
  sheet.view().ScrollTo(sheet.view().geometry().ToShow(row, column));
}

}  // namespace stockbook::app
