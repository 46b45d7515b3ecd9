// SPDX-License-Identifier: MIT
#include "sheet/input/fit.h"

#include <algorithm>
#include <cmath>

#include "sheet/geometry/scale.h"
#include "sheet/paint/cell_layout.h"
#include "sheet/paint/snapshot.h"
#include "sheet/view/view.h"

namespace stockbook::sheet {
namespace {

constexpr int kLeastPixels = 4;

// The size that the largest cell within the part of the view needs.
Size LargestWithin(const View& view, TextMeasure& measure, const Rect& part) {
  const Snapshot snapshot = Snapshot::Of(view, part);
  const CellLayout layout(snapshot, measure);
  Size largest;
  for (const SnapshotPane& pane : snapshot.panes()) {
    for (size_t row = 0; row < pane.rows.size(); ++row) {
      for (size_t column = 0; column < pane.columns.size(); ++column) {
        const Size needed = layout.NaturalSize(pane, row, column);
        largest = {std::max(largest.width, needed.width), std::max(largest.height, needed.height)};
      }
    }
  }
  return largest;
}

int ToTwips(const View& view, int pixels, int most_pixels) {
  const int fitted = std::clamp(pixels, kLeastPixels, std::max(kLeastPixels, most_pixels));
  return static_cast<int>(std::ceil(fitted * kTwipsPerPixel / view.scale()));
}

}  // namespace

void FitColumn(View& view, int column) {
  TextMeasure* measure = view.viewer() != nullptr ? view.viewer()->Measure() : nullptr;
  if (measure == nullptr || column < 0 || column >= view.sheet().Cols()) return;
  const Geometry geometry = view.geometry();
  // A hair of the column is enough to take all of its cells; the neighbours are not to be asked.
  Rect strip = geometry.CellRect(0, column).Intersected(geometry.PaneOf(0, column));
  if (strip.IsEmpty()) return;
  strip = {strip.x, 0, strip.width, geometry.view().height};
  view.sheet().SetColWidth(column, ToTwips(view, LargestWithin(view, *measure, strip).width, geometry.view().width));
}

void FitRow(View& view, int row) {
  TextMeasure* measure = view.viewer() != nullptr ? view.viewer()->Measure() : nullptr;
  if (measure == nullptr || row < 0 || row >= view.sheet().Rows() || view.sheet().Cols() == 0) return;
  const Geometry geometry = view.geometry();
  Rect strip = geometry.VisibleCellRect(row, 0);
  if (strip.height <= 0) return;
  strip = {0, strip.y, geometry.view().width, strip.height};
  view.sheet().SetRowHeight(row, ToTwips(view, LargestWithin(view, *measure, strip).height, geometry.view().height));
}

}  // namespace stockbook::sheet
