// SPDX-License-Identifier: MIT
#include "grid/row_colours.h"

#include <exception>

namespace stockbook::grid {

void CaptureRowColours(const platform::GridTable& grid, const platform::GridView& view, int row, RowColours& colours) {
  try {
    if (row < 0) row = view.Row();
    const int frozen = grid.FrozenCols();
    if (row < 0 || row >= grid.Rows() || frozen + 1 >= grid.Cols()) return;
    colours = {grid.CellBackColor(row, frozen + 1), grid.CellForeColor(row, frozen + 1),
               grid.CellBackColor(row, frozen), grid.CellForeColor(row, frozen)};
  } catch (const std::exception&) {
    // The colours stay as they were.
  }
}

}  // namespace stockbook::grid
