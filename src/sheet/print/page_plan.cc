// SPDX-License-Identifier: MIT
#include "sheet/print/page_plan.h"

#include <algorithm>
#include <cmath>

namespace stockbook::sheet {
namespace {

constexpr double kLeastZoom = 0.6;
// Of a page's width; pinned columns that take more leave too little for the others.
constexpr double kMostPinned = 0.5;

// The first row behind those that fit from `first` on; at least one row is taken.
int EndOfPage(const Sheet& sheet, int first, int64_t room) {
  const RowStates& states = sheet.states();
  const auto end = static_cast<int>(states.RowAtPixel(states.PixelsBefore(first) + room));
  if (end >= sheet.Rows()) return sheet.Rows();
  if (end <= first) return static_cast<int>(states.ShownAtOrAfter(first + 1));
  const auto last = static_cast<int>(states.ShownAtOrBefore(end - 1));
  const bool heads_others = sheet.IsSubtotal(last) && sheet.outline().Governs(last) && !sheet.IsCollapsed(last);
  return heads_others && last > first ? last : end;
}

}  // namespace

PagePlan::PagePlan(PaperLayout& paper, PageRoom room) {
  const Sheet& sheet = paper.sheet();
  const auto whole = static_cast<double>(paper.Width({0, sheet.Cols()}));
  if (whole > room.width) zoom_ = std::max(room.width / whole, kLeastZoom);
  const auto width = static_cast<int64_t>(std::ceil(room.width / zoom_));
  const auto height = static_cast<int64_t>(room.height / zoom_);
  if (static_cast<double>(paper.PinnedWidth()) > kMostPinned * static_cast<double>(width)) {
    pinned_ = PaperLayout::Pinned::kFixed;
    paper.Pin(pinned_);
  }
  BreakColumns(paper, width - paper.PinnedWidth());
  BreakRows(paper, height - paper.CaptionHeight());
}

void PagePlan::BreakColumns(const PaperLayout& paper, int64_t room) {
  const int columns = paper.sheet().Cols();
  int first = paper.sheet().PinnedCols();
  for (int column = first; column < columns; ++column) {
    const bool fits = paper.Width({first, column + 1}) <= room;
    if (fits || paper.Width({first, column}) == 0) continue;
    column_bands_.push_back({first, column});
    first = column;
  }
  if (column_bands_.empty() || paper.Width({first, columns}) > 0) column_bands_.push_back({first, columns});
}

void PagePlan::BreakRows(const PaperLayout& paper, int64_t room) {
  const Sheet& sheet = paper.sheet();
  for (int first = sheet.FixedRows(); first < sheet.Rows() && paper.Height({first, sheet.Rows()}) > 0;) {
    const int end = EndOfPage(sheet, first, std::max<int64_t>(room, 1));
    row_pages_.push_back({first, end});
    first = end;
  }
  if (row_pages_.empty()) row_pages_.push_back({sheet.FixedRows(), sheet.FixedRows()});
}

PagePlan::Page PagePlan::At(int page) const {
  const size_t bands = column_bands_.size();
  const auto at = static_cast<size_t>(std::clamp(page, 0, PageCount() - 1));
  return {row_pages_[at / bands], column_bands_[at % bands]};
}

}  // namespace stockbook::sheet
