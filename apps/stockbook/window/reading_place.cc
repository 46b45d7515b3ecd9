// SPDX-License-Identifier: MIT
#include "stockbook/window/reading_place.h"

namespace stockbook::app {

ReadingPlace::ReadingPlace(const sheet::GridSheet& sheet)
    : row_(sheet.Row()),
      scroll_(sheet.view().geometry().scroll()),
      column_key_(sheet.Col() >= 0 ? sheet.ColKey(sheet.Col()) : std::string()) {
  for (int node = sheet.NextSubtotal(sheet.FixedRows()); node >= 0; node = sheet.NextSubtotal(node + 1))
    if (sheet.IsCollapsed(node)) closed_.insert(sheet.TextMatrix(node, sheet.OutlineCol()));
}

bool ReadingPlace::GoBack(sheet::GridSheet& sheet) const {
  const int column = column_key_.empty() ? -1 : sheet.ColIndex(column_key_);
  if (column < 0 || sheet.ColHidden(column) || row_ < sheet.FixedRows() || row_ >= sheet.Rows()) return false;
  const bool redraw = sheet.Redraw();
  sheet.SetRedraw(false);
  for (int node = sheet.NextSubtotal(sheet.FixedRows()); node >= 0; node = sheet.NextSubtotal(node + 1))
    if (closed_.contains(sheet.TextMatrix(node, sheet.OutlineCol()))) sheet.SetIsCollapsed(node, true);
  sheet.Select(row_, column);
  sheet.view().ScrollTo(scroll_);
  sheet.SetRedraw(redraw);
  return true;
}

}  // namespace stockbook::app
