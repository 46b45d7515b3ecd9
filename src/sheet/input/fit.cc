// SPDX-License-Identifier: MIT
#include "sheet/input/fit.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "sheet/geometry/scale.h"
#include "sheet/paint/cell_layout.h"
#include "sheet/paint/snapshot.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::sheet {
namespace {

constexpr int kLeastPixels = 4;
// What FitColumns asks: so many strips of that height, spread over the sheet.
constexpr int kStrips = 64;
constexpr int kStripPixels = 4096;

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

// The widths that the cells in the part of the view need, as far as they exceed those found before.
void Widen(const View& view, TextMeasure& measure, std::vector<int>& widths) {
  const Snapshot snapshot = Snapshot::Of(view);
  const CellLayout layout(snapshot, measure);
  for (const SnapshotPane& pane : snapshot.panes()) {
    for (size_t row = 0; row < pane.rows.size(); ++row) {
      for (size_t column = 0; column < pane.columns.size(); ++column) {
        int& width = widths[static_cast<size_t>(pane.columns[column].column)];
        width = std::max(width, layout.NaturalSize(pane, row, column).width);
      }
    }
  }
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

void FitColumns(View& view) {
  TextMeasure* measure = view.viewer() != nullptr ? view.viewer()->Measure() : nullptr;
  Sheet& sheet = view.sheet();
  if (measure == nullptr || sheet.Cols() == 0) return;
  // A view of its own that is as wide as all columns.
  constexpr int64_t kMostPixels = 1 << 24;
  const auto all = static_cast<int>(std::clamp<int64_t>(view.geometry().ContentWidth(), 1, kMostPixels));
  View wide(view, {all, kStripPixels}, view.scale());
  const int64_t most = wide.geometry().max_scroll().y;
  const int64_t step = std::max<int64_t>(most / kStrips, kStripPixels / 2);
  std::vector<int> widths(static_cast<size_t>(sheet.Cols()));
  for (int64_t y = 0;; y = std::min(y + step, most)) {
    wide.ScrollTo({0, y});
    Widen(wide, *measure, widths);
    if (y >= most) break;
  }
  const int view_width = view.geometry().view().width;
  for (int column = sheet.FixedCols(); column < sheet.Cols(); ++column) {
    const int width = widths[static_cast<size_t>(column)];
    if (!sheet.ColHidden(column) && width > 0) sheet.SetColWidth(column, ToTwips(view, width, view_width));
  }
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
