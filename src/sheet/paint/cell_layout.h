// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <string_view>
#include <vector>

#include "sheet/geometry/outline_metrics.h"
#include "sheet/paint/canvas.h"
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
  CellLayout(const Snapshot& snapshot, Canvas& canvas);

  // The cell without its grid lines and without what the tree takes.
  Rect ContentRect(const SnapshotPane& pane, size_t row, size_t column) const;
  // Of the cell's picture within the content; `content` loses what the picture takes at its left or right.
  PictureItem PlacePicture(const SnapshotCell& cell, Rect& content) const;
  // Appends the lines of the cell's text to `items`.
  void PlaceText(const SnapshotCell& cell, const Rect& content, std::vector<TextItem>& items) const;

  const PaintMetrics& metrics() const { return metrics_; }
  bool HasTree(const SnapshotPane& pane, size_t column) const;

 private:
  // The line, or as many # as fit when it is a number that does not.
  std::string_view Fitting(const SnapshotCell& cell, std::string_view line, int width) const;

  const Snapshot& snapshot_;
  Canvas& canvas_;
  PaintMetrics metrics_;
  std::vector<FontMetrics> fonts_;
};

}  // namespace stockbook::sheet
