// SPDX-License-Identifier: MIT
#include "stockbook/window/reading_place.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "stockbook/base/column_keys.h"

namespace stockbook::app {
namespace {

// The record and its bill: those of receipts and issues are numbered apart, but their bills are called differently.
std::string LineAt(const sheet::GridSheet& sheet, int row) {
  std::string line;
  for (const char* key : {base::keys::kRecID, base::keys::kBillID, base::keys::kBillName}) {
    const int column = sheet.ColIndex(key);
    if (column < 0) return {};
    const std::string part = sheet.TextMatrix(row, column);
    if (part.empty()) return {};
    line += part + "|";
  }
  return line;
}

int64_t HeightOf(const sheet::GridSheet& sheet) {
  return sheet.Row() < 0 || sheet.Col() < 0 ? 0 : sheet.view().geometry().CellRect(sheet.Row(), sheet.Col()).y;
}

}  // namespace

ReadingPlace::ReadingPlace(const sheet::GridSheet& sheet)
    : row_(sheet.Row()),
      scroll_(sheet.view().geometry().scroll()),
      height_(HeightOf(sheet)),
      column_key_(sheet.Col() >= 0 ? sheet.ColKey(sheet.Col()) : std::string()),
      line_(row_ >= sheet.FixedRows() ? LineAt(sheet, row_) : std::string()) {
  for (int node = sheet.NextSubtotal(sheet.FixedRows()); node >= 0; node = sheet.NextSubtotal(node + 1))
    if (sheet.IsCollapsed(node)) closed_.insert(sheet.TextMatrix(node, sheet.OutlineCol()));
}

ReadingPlace::ReadingPlace(KeptPlace kept)
    : row_(kept.row), column_key_(kept.column), line_(kept.line), kept_(std::move(kept)) {}

KeptPlace ReadingPlace::Keep(const sheet::GridSheet& sheet) {
  const ReadingPlace place(sheet);
  const double scale = sheet.view().scale();
  const bool in_sight = place.row_ >= 0 && sheet.view().geometry().RowIsVisible(place.row_);
  return {place.row_,
          place.column_key_,
          place.line_,
          static_cast<double>(place.scroll_.x) / scale,
          static_cast<double>(place.height_) / scale,
          in_sight};
}

int ReadingPlace::FindRow(const sheet::GridSheet& sheet) const {
  const bool is_there = row_ >= sheet.FixedRows() && row_ < sheet.Rows();
  if (line_.empty()) return is_there ? row_ : -1;
  if (is_there && LineAt(sheet, row_) == line_) return row_;
  const int records = sheet.ColIndex(base::keys::kRecID);
  if (records < 0) return -1;
  const std::string record = line_.substr(0, line_.find('|'));
  for (int row = sheet.FixedRows(); row < sheet.Rows(); ++row) {
    if (sheet.TextMatrix(row, records) == record && LineAt(sheet, row) == line_) return row;
  }
  // The line was deleted; what is in its place is nearest to it.
  return is_there ? row_ : -1;
}

bool ReadingPlace::GoBack(sheet::GridSheet& sheet) const {
  int column = column_key_.empty() ? -1 : sheet.ColIndex(column_key_);
  // The user may have hidden the very column that the current cell is in.
  if (kept_ && (column < 0 || sheet.ColHidden(column))) column = sheet.OutlineCol();
  const int row = FindRow(sheet);
  if (column < 0 || sheet.ColHidden(column) || row < 0 || sheet.RowHidden(row)) return false;
  const bool redraw = sheet.Redraw();
  sheet.SetRedraw(false);
  for (int node = sheet.NextSubtotal(sheet.FixedRows()); node >= 0; node = sheet.NextSubtotal(node + 1))
    if (closed_.contains(sheet.TextMatrix(node, sheet.OutlineCol()))) sheet.SetIsCollapsed(node, true);
  sheet.Select(row, column);
  ScrollBack(sheet, row);
  sheet.SetRedraw(redraw);
  return true;
}

void ReadingPlace::ScrollBack(sheet::GridSheet& sheet, int row) const {
  sheet::View& view = sheet.view();
  if (!kept_) {
    view.ScrollTo(scroll_);
    if (row != row_) view.ScrollTo({scroll_.x, scroll_.y + HeightOf(sheet) - height_});
    return;
  }
  // More than any view, and far from overflowing.
  constexpr double kMostPx = 1e9;
  const auto pixels = [&](double length) { return std::llround(std::clamp(length, -kMostPx, kMostPx) * view.scale()); };
  view.ScrollTo({pixels(kept_->left), view.geometry().scroll().y + HeightOf(sheet) - pixels(kept_->height)});
  // The window may be smaller now.
  if (kept_->in_sight) view.ScrollTo(view.geometry().ToShow(sheet.Row(), sheet.Col()));
}

}  // namespace stockbook::app
