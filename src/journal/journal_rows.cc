// SPDX-License-Identifier: MIT
#include "journal/journal_rows.h"

#include "base/column_keys.h"

namespace stockbook::journal {

void LayRows(platform::Recordset rows, platform::Grid& grid) {
  if (rows.AtEnd()) return;
  auto fields = rows.TakeAll();
  std::vector<columns::Column> columns;
  columns.reserve(fields.size());
  for (auto& field : fields) columns.push_back(std::move(field.column));
  int column = grid.FixedCols();
  grid.LoadColumns(std::move(columns), column);
  for (const auto& field : fields) grid.SetColKey(column++, field.name);
  grid.GroupBy(grid.ColIndex(base::keys::kPeriod), grid.ColIndex(base::keys::kBillNo), "%s");
}

}  // namespace stockbook::journal
