// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <string_view>
#include <vector>

#include "sheet/geometry/outline_metrics.h"
#include "sheet/geometry/text_measure.h"
#include "sheet/paint/batches.h"
#include "sheet/paint/snapshot.h"

namespace stockbook::sheet {

// Distances of painting in device pixels.
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

// What the canvas said of a font; asked once a frame.
struct FontMetrics {
  int line_height = 0;
  int number_width = 0;  // of the widest sign in a number
};

// Where the contents of a cell stand.
class CellLayout {
 public:
  CellLayout(const Snapshot& snapshot, TextMeasure& measure);

  // The cell without its grid lines and without what the tree takes.
  Rect ContentRect(const SnapshotPane& pane, size_t row, size_t column) const;
  // Of the cell's picture within the content; `content` loses what the picture takes at its left or right.
  PictureItem PlacePicture(const SnapshotCell& cell, Rect& content) const;
  // Adds the lines of the cell's text to `batches`, those that are numbers below zero in their own colour. `seen` is
  // what is seen of the pane: a number that reaches over its side is not shown as the digits that are left of it.
  void PlaceText(const SnapshotCell& cell, const Rect& content, const Rect& seen, Batches& batches) const;

  // Whether a part of the cell's text is not seen in the content: too wide, or of more lines than it is high.
  bool IsCut(const SnapshotCell& cell, const Rect& content, const Rect& seen) const;
  // What the cell would have to measure, its lines and margins included, to show everything of it.
  Size NaturalSize(const SnapshotPane& pane, size_t row, size_t column) const;

  const PaintMetrics& metrics() const { return metrics_; }
  bool HasTree(const SnapshotPane& pane, size_t column) const;

 private:
  int LineHeightOf(const SnapshotCell& cell) const { return std::max(1, fonts_[cell.font].line_height); }
  // As many # as fit, where the line is a number that does not.
  std::string_view Hashes(const SnapshotCell& cell, int width) const;
  // Whether a line of the width, placed in the room, is not seen whole between the sides of `seen`.
  static bool IsCutOff(HorizontalAlign align, const Rect& room, const Rect& seen, int width);

  const Snapshot& snapshot_;
  TextMeasure& measure_;
  PaintMetrics metrics_;
  std::vector<FontMetrics> fonts_;
};

}  // namespace stockbook::sheet
