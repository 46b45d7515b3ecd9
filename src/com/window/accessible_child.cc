// SPDX-License-Identifier: MIT
#include "com/window/accessible_child.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "sheet/access/table_access.h"

namespace stockbook::com {
namespace {

LONG ClampedNumber(int64_t number) {
  return static_cast<LONG>(std::min<int64_t>(number, std::numeric_limits<LONG>::max()));
}

}  // namespace

LONG ChildIdOf(sheet::View& view, const sheet::CellPosition& cell) {
  const sheet::TableAccess table(view);
  const int column = table.IndexOfColumn(cell.column);
  if (column < 0) return CHILDID_SELF;
  if (cell.row < 0) return table.HasCaptions() ? column + 1 : CHILDID_SELF;
  const int64_t row = table.IndexOfRow(cell.row);
  if (row < 0) return CHILDID_SELF;
  return ClampedNumber((row + (table.HasCaptions() ? 1 : 0)) * table.ColumnCount() + column + 1);
}

std::optional<sheet::CellPosition> CellOfChild(sheet::View& view, LONG child) {
  const sheet::TableAccess table(view);
  if (child < 1 || child > ChildCountOf(view)) return std::nullopt;
  const int columns = table.ColumnCount();
  const int line = static_cast<int>((child - 1) / columns) - (table.HasCaptions() ? 1 : 0);
  return sheet::CellPosition{line < 0 ? -1 : table.RowOf(line),
                             table.ColumnOf(static_cast<int>((child - 1) % columns))};
}

LONG ChildCountOf(sheet::View& view) {
  const sheet::TableAccess table(view);
  return ClampedNumber((int64_t{table.RowCount()} + (table.HasCaptions() ? 1 : 0)) * table.ColumnCount());
}

}  // namespace stockbook::com
