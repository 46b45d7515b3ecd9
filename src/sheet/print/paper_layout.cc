// SPDX-License-Identifier: MIT
#include "sheet/print/paper_layout.h"

#include <algorithm>
#include <limits>

#include "sheet/geometry/scale.h"

namespace stockbook::sheet {
namespace {

constexpr int64_t kMostPixels = int64_t{1} << 28;

int Clamped(int64_t pixels) { return static_cast<int>(std::clamp<int64_t>(pixels, 0, kMostPixels)); }

}  // namespace

PaperLayout::PaperLayout(Sheet& sheet, double scale, const Appearance& appearance)
    : sheet_(sheet),
      viewer_(sheet.viewer()),
      layout_(sheet.layout()),
      appearance_(sheet.appearance()),
      frozen_columns_(sheet.FrozenCols()) {
  sheet_.SetViewer(nullptr);
  sheet_.SetView(layout_.view, scale);
  sheet_.SetAppearance(appearance);
}

PaperLayout::~PaperLayout() {
  Pin(Pinned::kFrozen);
  sheet_.SetAppearance(appearance_);
  sheet_.SetLayout(layout_);
  sheet_.SetViewer(viewer_);
}

void PaperLayout::Pin(Pinned pinned) {
  const int frozen = pinned == Pinned::kFrozen ? frozen_columns_ : 0;
  if (frozen != sheet_.FrozenCols()) sheet_.SetFrozenCols(frozen);
}

int PaperLayout::CaptionHeight() const { return Clamped(sheet_.rows().Top(sheet_.FixedRows())); }

int PaperLayout::PinnedWidth() const { return Clamped(Width({0, sheet_.PinnedCols()})); }

int64_t PaperLayout::Width(Span columns) const {
  int64_t width = 0;
  for (int column = columns.first; column < columns.last; ++column) {
    if (!sheet_.ColHidden(column)) width += ToPixels(sheet_.ColWidth(column), sheet_.scale());
  }
  return width;
}

int64_t PaperLayout::Height(Span rows) const { return sheet_.rows().Top(rows.last) - sheet_.rows().Top(rows.first); }

// The view is as large as what it shows, so that it can be scrolled to begin with any row and any column.
void PaperLayout::Show(Span rows, Span columns) {
  const int64_t width = PinnedWidth() + Width(columns);
  const int64_t height = CaptionHeight() + Height(rows);
  sheet_.SetView({Clamped(width), Clamped(height)}, sheet_.scale());
  sheet_.ScrollTo({Width({sheet_.PinnedCols(), columns.first}), Height({sheet_.FixedRows(), rows.first})});
}

}  // namespace stockbook::sheet
