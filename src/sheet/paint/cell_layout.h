// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <string_view>
#include <vector>

#include "sheet/geometry/outline_metrics.h"
#include "sheet/paint/batches.h"
#include "sheet/paint/snapshot.h"
#include "stockbook/sheet/geometry/text_measure.h"

namespace stockbook::sheet {

// Distances in device pixels.
struct PaintMetrics {
  int line = 1;     // a grid line
  int padding = 4;  // between a cell's edge and its contents
  int gap = 3;      // between a picture and the text beside it
  OutlineMetrics outline;

  static PaintMetrics Of(double scale) {
    const auto scaled = [&](double size) { return static_cast<int>(std::lround(size * scale)); };
    return {std::max(1, static_cast<int>(scale)), scaled(4), scaled(3), OutlineMetrics::Of(scale)};
  }
};

// The canvas's measures of a font, taken once a frame.
struct FontMetrics {
  int line_height = 0;
  int number_width = 0;  // of the widest character in a number
};

// Lays out the contents of cells.
class CellLayout {
 public:
  CellLayout(const Snapshot& snapshot, TextMeasure& measure);

  // The cell without its grid lines and the indent of the tree.
  Rect ContentRect(const SnapshotPane& pane, size_t row, size_t column) const;
  // Places the cell's picture within `content` and reduces `content` by the room it takes on the left or right.
  PictureItem PlacePicture(const SnapshotCell& cell, Rect& content) const;
  // Adds the lines of the cell's text to `batches`, negative numbers in their own colour. `seen` is the visible part of
  // the pane: a number that extends beyond its sides is never shown with only some of its digits.
  void PlaceText(const SnapshotCell& cell, const Rect& content, const Rect& seen, Batches& batches) const;

  // Whether part of the cell's text is invisible because it is too wide or has too many lines.
  bool IsCut(const SnapshotCell& cell, const Rect& content, const Rect& seen) const;
  // The size that the cell needs to show everything, including grid lines and margins.
  Size NaturalSize(const SnapshotPane& pane, size_t row, size_t column) const;

  const PaintMetrics& metrics() const { return metrics_; }
  bool HasTree(const SnapshotPane& pane, size_t column) const;

 private:
  int LineHeightOf(const SnapshotCell& cell) const { return std::max(1, fonts_[cell.font].line_height); }
  // As many # signs as fit, in place of a number that does not.
  std::string_view Hashes(const SnapshotCell& cell, int width) const;
  // Whether a line of the width, placed in the room, is cut off by the room or by the sides of `seen`.
  static bool IsCutOff(HorizontalAlign align, const Rect& room, const Rect& seen, int width);

  const Snapshot& snapshot_;
  TextMeasure& measure_;
  PaintMetrics metrics_;
  std::vector<FontMetrics> fonts_;
};

}  // namespace stockbook::sheet
