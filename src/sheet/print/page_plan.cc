// SPDX-License-Identifier: MIT
#include "sheet/print/page_plan.h"

#include <algorithm>
#include <cmath>

#include "sheet/outline/outline.h"
#include "sheet/outline/row_states.h"

namespace stockbook::sheet {
namespace {

constexpr double kSmallestZoom = 0.1;
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

PagePlan::PagePlan(PaperLayout& paper, PageRoom room, const PageSetup& setup) {
  Zoom(paper, room.width, setup);
  column_bands_ = BandsOf(paper, room.width);
  const auto height = static_cast<int64_t>(room.height / zoom_) - paper.CaptionHeight();
  BreakRows(paper, height);
  if (setup.carried_columns.empty() || row_pages_.size() < 2) return;
  carried_height_ = paper.rows().HeightOf(RowState());
  BreakRows(paper, height - 2 * int64_t{carried_height_});
}

// The largest zoom with which the columns fit on as many pages as wanted.
void PagePlan::Zoom(PaperLayout& paper, double width, const PageSetup& setup) {
  const double least = std::clamp(setup.least_zoom, kSmallestZoom, 1.0);
  const auto whole = static_cast<double>(paper.Width({0, paper.sheet().Cols()}));
  const bool on_one_page = whole * least <= width;
  if (whole > width && on_one_page) zoom_ = std::max(width / whole, least);
  if (whole <= width || (on_one_page && setup.pages_wide <= 1)) return;
  const int frozen = paper.sheet().FrozenCols() > 0 ? paper.sheet().PinnedCols() : 0;
  paper.Pin(std::max(frozen, setup.repeated_column + 1));
  const double most_pinned = kMostPinned * (on_one_page ? width : width / least);
  if (static_cast<double>(paper.PinnedWidth()) > most_pinned) paper.Pin(0);
  constexpr int kSteps = 24;
  double fitting = std::max(zoom_ < 1 ? zoom_ : least, least);
  double beyond = 1;
  const auto fits = [&](double zoom) {
    zoom_ = zoom;
    return BandsOf(paper, width).size() <= static_cast<size_t>(std::max(setup.pages_wide, 1));
  };
  if (fits(beyond)) return;
  for (int step = 0; step < kSteps; ++step) {
    const double middle = (fitting + beyond) / 2;
    (fits(middle) ? fitting : beyond) = middle;
  }
  zoom_ = fits(fitting) ? fitting : least;
}

std::vector<Span> PagePlan::BandsOf(const PaperLayout& paper, double width) const {
  const auto room = static_cast<int64_t>(std::ceil(width / zoom_)) - paper.PinnedWidth();
  const int columns = paper.sheet().Cols();
  std::vector<Span> bands;
  int first = paper.PinnedCols();
  int64_t taken = 0;
  for (int column = first; column < columns; ++column) {
    const int64_t needed = paper.Width({column, column + 1});
    if (taken > 0 && needed > 0 && taken + needed > room) {
      bands.push_back({first, column});
      first = column;
      taken = 0;
    }
    taken += needed;
  }
  if (bands.empty() || taken > 0) bands.push_back({first, columns});
  return bands;
}

void PagePlan::BreakRows(const PaperLayout& paper, int64_t room) {
  const Sheet& sheet = paper.sheet();
  const RowAxis& rows = paper.rows();
  const auto next = [&](int row) { return static_cast<int>(rows.RowAt(rows.Top(row))); };
  row_pages_.clear();
  for (int first = next(sheet.FixedRows()); first < sheet.Rows();) {
    const int end = EndOfPage(paper, first, std::max<int64_t>(room, 1));
    row_pages_.push_back({first, end});
    first = next(end);
  }
  if (row_pages_.empty()) row_pages_.push_back({sheet.FixedRows(), sheet.FixedRows()});
}

size_t PagePlan::RowPage(int page) const {
  return static_cast<size_t>(std::clamp(page, 0, PageCount() - 1)) / column_bands_.size();
}

PagePlan::Page PagePlan::At(int page) const {
  const auto at = static_cast<size_t>(std::clamp(page, 0, PageCount() - 1));
  return {row_pages_[RowPage(page)], column_bands_[at % column_bands_.size()]};
}

int PagePlan::PageOfRow(int row) const {
  const auto after =
      std::partition_point(row_pages_.begin(), row_pages_.end(), [&](const Span& rows) { return rows.last <= row; });
  const auto page = std::min<size_t>(static_cast<size_t>(after - row_pages_.begin()), row_pages_.size() - 1);
  return static_cast<int>(page * column_bands_.size());
}

}  // namespace stockbook::sheet
