// SPDX-License-Identifier: MIT
#include "sheet/print/page_plan.h"

#include <algorithm>
#include <cmath>

namespace stockbook::sheet {
namespace {

constexpr double kLeastZoom = 0.6;
// The largest share of a page's width for pinned columns, so that enough is left for the others.
constexpr double kMostPinned = 0.5;

bool IsOpenNode(const Sheet& sheet, int row) {
  return sheet.IsSubtotal(row) && sheet.outline().Governs(row) && !sheet.IsCollapsed(row);
}

// The end of the rows that fit on a page from `first`, a shown row, on; at least one row.
int EndOfPage(const PaperLayout& paper, int first, int64_t room) {
  const Sheet& sheet = paper.sheet();
  const RowStates& states = sheet.states();
  const auto end = static_cast<int>(paper.rows().RowAt(paper.rows().Top(first) + room));
  if (end >= sheet.Rows()) return sheet.Rows();
  if (end <= first) return first + 1;
  // There may be nodes of several levels in a row.
  auto foot = static_cast<int>(states.ShownAtOrBefore(end - 1));
  int kept = end;
  while (foot > first && IsOpenNode(sheet, foot)) {
    kept = foot;
    foot = static_cast<int>(states.ShownAtOrBefore(foot - 1));
  }
  return foot > first || !IsOpenNode(sheet, first) ? kept : end;
}

}  // namespace

PagePlan::PagePlan(PaperLayout& paper, PageRoom room) {
  const Sheet& sheet = paper.sheet();
  const auto whole = static_cast<double>(paper.Width({0, sheet.Cols()}));
  if (whole > room.width) zoom_ = std::max(room.width / whole, kLeastZoom);
  const auto width = static_cast<int64_t>(std::ceil(room.width / zoom_));
  const auto height = static_cast<int64_t>(room.height / zoom_);
  if (static_cast<double>(paper.PinnedWidth()) > kMostPinned * static_cast<double>(width)) paper.UnpinFrozen();
  BreakColumns(paper, width - paper.PinnedWidth());
  BreakRows(paper, height - paper.CaptionHeight());
}

void PagePlan::BreakColumns(const PaperLayout& paper, int64_t room) {
  const int columns = paper.sheet().Cols();
  int first = paper.PinnedCols();
  int64_t taken = 0;
  for (int column = first; column < columns; ++column) {
    const int64_t width = paper.Width({column, column + 1});
    if (taken > 0 && width > 0 && taken + width > room) {
      column_bands_.push_back({first, column});
      first = column;
      taken = 0;
    }
    taken += width;
  }
  if (column_bands_.empty() || taken > 0) column_bands_.push_back({first, columns});
}

void PagePlan::BreakRows(const PaperLayout& paper, int64_t room) {
  const Sheet& sheet = paper.sheet();
  const RowAxis& rows = paper.rows();
  const auto next = [&](int row) { return static_cast<int>(rows.RowAt(rows.Top(row))); };
  for (int first = next(sheet.FixedRows()); first < sheet.Rows();) {
    const int end = EndOfPage(paper, first, std::max<int64_t>(room, 1));
    row_pages_.push_back({first, end});
    first = next(end);
  }
  if (row_pages_.empty()) row_pages_.push_back({sheet.FixedRows(), sheet.FixedRows()});
}

PagePlan::Page PagePlan::At(int page) const {
  const size_t bands = column_bands_.size();
  const auto at = static_cast<size_t>(std::clamp(page, 0, PageCount() - 1));
  return {row_pages_[at / bands], column_bands_[at % bands]};
}

}  // namespace stockbook::sheet
