// SPDX-License-Identifier: MIT
#include "grid/row_runs.h"

namespace stockbook::grid {

RowRun RowRunAt(const platform::GridTable& grid, int row) {
  if (row < 0 || row >= grid.Rows()) return {row, 0, -1};
  const int records = grid.RecordsFrom(row);
  return records > 0 ? RowRun{row, records, grid.RecordOfRow(row)} : RowRun{row, 1, -1};
}

const columns::Column* UneditedColumn(const platform::GridTable& grid, int column) {
  return grid.HasEditedRecords(column) ? nullptr : grid.LoadedText(column);
}

}  // namespace stockbook::grid
