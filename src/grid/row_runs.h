// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "stockbook/platform/grid_table.h"

namespace stockbook::grid {

// Rows [row, row + count) that show the records [record, record + count) one after the other, or one inserted row.
struct RowRun {
  int row = 0;
  int count = 0;        // 0 after the last row
  int64_t record = -1;  // -1: the row is no record

  bool IsInserted() const { return count > 0 && record < 0; }
  int End() const { return row + count; }
};

// The run that begins at `row`, as long as it can be; a row that is none gives an empty one. O(log inserted rows)
// however long the run is. All rows of a grid in order, as it is at each step:
//   for (RowRun run = RowRunAt(grid, grid.FixedRows()); run.count > 0; run = RowRunAt(grid, run.End()))
RowRun RowRunAt(const platform::GridTable& grid, int row);

// What the records show in a column when all of them show it as it was loaded; nullptr where nothing was loaded, or a
// cell was written since: such a column is read cell by cell.
const columns::Column* UneditedColumn(const platform::GridTable& grid, int column);

}  // namespace stockbook::grid
