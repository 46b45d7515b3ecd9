// SPDX-License-Identifier: MIT
// Sheet as platform::GridOutline.
#include <utility>

#include "base/text.h"
#include "sheet/contents/kept_sheet.h"
#include "sheet/outline/outline.h"
#include "sheet/outline/row_states.h"
#include "sheet/store/store.h"
#include "stockbook/platform/error.h"
#include "stockbook/sheet/contents/sheet.h"

namespace stockbook::sheet {
namespace {

constexpr int kMostLevel = 1000;

}  // namespace

using platform::Error;
using platform::OutlineBarStyle;
using platform::PictureRef;

void Sheet::GroupBy(int column, int caption_column, std::string_view caption_format) {
  CheckColumn("GroupBy", column);
  CheckColumn("GroupBy", caption_column);
  const std::vector<Store::TextRun> runs = store_.TextRuns(column, outline_.Lines(fixed_rows_));
  std::vector<int64_t> rows;
  rows.reserve(runs.size());
  for (const Store::TextRun& run : runs) rows.push_back(run.row);
  Renew(revisions_.rows);
  if (rows.size() > static_cast<size_t>(Store::kMostRows - Rows())) {
    throw Error("GroupBy", "GroupBy: " + std::to_string(rows.size()) + " groups are more than the grid has room for.");
  }
  RowOrder order = store_.order();
  order.InsertBeforeEach(rows);
  outline_.InsertNodes(rows, fixed_rows_);
  store_.SetOrder(std::move(order));
  const auto fill = [&] {
    for (size_t node = 0; node < runs.size(); ++node) {
      const auto row = static_cast<int>(runs[node].row + static_cast<int64_t>(node));
      store_.SetText(row, caption_column, base::ReplaceAll(caption_format, "%s", runs[node].text));
    }
  };
  Telling(fill, [&] {
    Tell([&](SheetWatcher& watcher) { watcher.RowsInserted(rows, 1); });
    RowsChanged();
  });
}

void Sheet::SetIsSubtotal(int row, bool subtotal) {
  CheckRow("IsSubtotal", row);
  outline_.SetSubtotal(row, subtotal);
  RowsChanged();
}

bool Sheet::IsSubtotal(int row) const {
  CheckRow("IsSubtotal", row);
  return states_.At(row).subtotal;
}

int Sheet::NextSubtotal(int row) const {
  return row >= Rows() ? -1 : static_cast<int>(states_.NextNode(row < 0 ? 0 : row));
}

int Sheet::RowOutlineLevel(int row) const {
  CheckRow("RowOutlineLevel", row);
  return states_.At(row).level;
}

void Sheet::SetRowOutlineLevel(int row, int level) {
  CheckRow("RowOutlineLevel", row);
  if (level < 0 || level > kMostLevel) {
    throw Error("RowOutlineLevel", "RowOutlineLevel: " + std::to_string(level) + " is no outline level; use 0 to " +
                                       std::to_string(kMostLevel) + ".");
  }
  outline_.SetLevel(row, level);
  RowsChanged();
}

bool Sheet::IsCollapsed(int row) const {
  CheckRow("IsCollapsed", row);
  return states_.At(row).collapsed;
}

void Sheet::SetIsCollapsed(int row, bool collapsed) {
  CheckRow("IsCollapsed", row);
  if (!outline_.SetCollapsed(row, collapsed)) return;
  if (redraw_) Tell([&](SheetWatcher& watcher) { watcher.NodeChanged(row); });
  RowsChanged();
}

void Sheet::CollapseAll() {
  if (outline_.SetAllCollapsed(true)) RowsChanged();
}

void Sheet::ExpandAll() {
  if (outline_.SetAllCollapsed(false)) RowsChanged();
}

void Sheet::SetOutlineCol(int column) {
  if (column != -1) CheckColumn("OutlineCol", column);
  outline_col_ = column;
  LooksChanged();
}

void Sheet::SetOutlineBar(OutlineBarStyle style) {
  appearance_.outline_bar = style;
  LooksChanged();
}

void Sheet::SetNodeOpenPicture(const PictureRef& picture) {
  appearance_.node_open = picture;
  LooksChanged();
}

void Sheet::SetNodeClosedPicture(const PictureRef& picture) {
  appearance_.node_closed = picture;
  LooksChanged();
}

}  // namespace stockbook::sheet
