// SPDX-License-Identifier: MIT
#include "stockbook/window/column_arrangement.h"

#include <algorithm>

#include "stockbook/platform/grid_guards.h"

namespace stockbook::app {

ColumnArrangement ColumnArrangement::Of(const platform::Grid& grid) {
  ColumnArrangement now;
  for (int column = grid.FixedCols(); column < grid.Cols(); ++column)
    now.columns.push_back({grid.ColKey(column), grid.ColWidth(column), grid.ColHidden(column)});
  now.frozen = grid.FrozenCols();
  return now;
}

void ColumnArrangement::Apply(platform::Grid& grid, const std::string& kept) const {
  const auto redraw = platform::RedrawOff(grid);
  int position = grid.FixedCols();
  for (const Column& wanted : columns) {
    const int column = grid.ColIndex(wanted.key);
    if (column < grid.FixedCols()) continue;
    if (column != position) grid.SetColPosition(column, position);
    if (grid.ColWidth(position) != wanted.width_twips) grid.SetColWidth(position, wanted.width_twips);
    const bool hidden = wanted.hidden || IsKept(kept, wanted.key);
    if (grid.ColHidden(position) != hidden) grid.SetColHidden(position, hidden);
    ++position;
  }
  const int most = std::max(0, grid.Cols() - 1);
  if (grid.FrozenCols() != frozen) grid.SetFrozenCols(std::clamp(frozen, 0, most));
}

bool IsKept(const std::string& kept, const std::string& key) { return kept.find("|" + key + "|") != std::string::npos; }

}  // namespace stockbook::app
