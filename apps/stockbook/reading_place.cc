// SPDX-License-Identifier: MIT
#include "stockbook/reading_place.h"

namespace stockbook::app {

ReadingPlace::ReadingPlace(const platform::Grid& grid)
    : row_(grid.Row()),
      top_row_(grid.TopRow()),
      column_key_(grid.Col() >= 0 ? grid.ColKey(grid.Col()) : std::string()) {
  for (int node = grid.NextSubtotal(grid.FixedRows()); node >= 0; node = grid.NextSubtotal(node + 1))
    if (grid.IsCollapsed(node)) closed_.insert(grid.TextMatrix(node, grid.OutlineCol()));
}

bool ReadingPlace::GoBack(platform::Grid& grid) const {
  const int column = column_key_.empty() ? -1 : grid.ColIndex(column_key_);
  if (column < 0 || grid.ColHidden(column) || row_ < grid.FixedRows() || row_ >= grid.Rows()) return false;
  const bool redraw = grid.Redraw();
  grid.SetRedraw(false);
  for (int node = grid.NextSubtotal(grid.FixedRows()); node >= 0; node = grid.NextSubtotal(node + 1))
    if (closed_.contains(grid.TextMatrix(node, grid.OutlineCol()))) grid.SetIsCollapsed(node, true);
  grid.Select(row_, column);
  if (top_row_ >= grid.FixedRows() && top_row_ < grid.Rows()) grid.SetTopRow(top_row_);
  grid.SetRedraw(redraw);
  return true;
}

}  // namespace stockbook::app
