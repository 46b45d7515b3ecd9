// SPDX-License-Identifier: MIT
#include "sheet/print/paper_layout.h"

#include <algorithm>

#include "sheet/geometry/scale.h"

namespace stockbook::sheet {
namespace {

constexpr int64_t kMostPixels = int64_t{1} << 28;

int Clamped(int64_t pixels) { return static_cast<int>(std::clamp<int64_t>(pixels, 0, kMostPixels)); }

}  // namespace

PaperLayout::PaperLayout(Sheet& sheet, double scale) : view_(sheet) { view_.SetSize(view_.size(), scale); }

int PaperLayout::CaptionHeight() const { return Clamped(rows().Top(sheet().FixedRows())); }

int PaperLayout::PinnedWidth() const { return Clamped(Width({0, PinnedCols()})); }

int64_t PaperLayout::Width(Span columns) const {
  int64_t width = 0;
  for (int column = columns.first; column < columns.last; ++column) {
    if (!sheet().ColHidden(column)) width += ToPixels(sheet().ColWidth(column), view_.scale());
  }
  return width;
}

int64_t PaperLayout::Height(Span of) const { return rows().Top(of.last) - rows().Top(of.first); }

// The view is exactly as large as what it shows, so that it can be scrolled to any first row and column.
void PaperLayout::Show(Span rows, Span columns) {
  const int64_t width = PinnedWidth() + Width(columns);
  const int64_t height = CaptionHeight() + Height(rows);
  view_.SetSize({Clamped(width), Clamped(height)}, view_.scale());
  view_.ScrollTo({Width({PinnedCols(), columns.first}), Height({sheet().FixedRows(), rows.first})});
}

}  // namespace stockbook::sheet
