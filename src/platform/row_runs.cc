// SPDX-License-Identifier: MIT
#include "platform/row_runs.h"

namespace stockbook::platform {

RowRun RowRunAt(const Grid& grid, int row) {
  if (row < 0 || row >= grid.Rows()) return {row, 0, -1};
  const int records = grid.RecordsFrom(row);
  return records > 0 ? RowRun{row, records, grid.RecordOfRow(row)} : RowRun{row, 1, -1};
}

const columns::Column* UneditedColumn(const Grid& grid, int column) {
  return grid.HasEditedRecords(column) ? nullptr : grid.LoadedText(column);
}

}  // namespace stockbook::platform
