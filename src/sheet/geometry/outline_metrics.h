// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>

#include "stockbook/sheet/geometry/rect.h"

namespace stockbook::sheet {

// How far the tree indents the contents of the outline column, and where the sign of a node is. Used for painting and
// for clicks. In device pixels.
struct OutlineMetrics {
  int step = 16;  // of one level
  int sign = 9;   // side of a node's box; odd, so that it has a middle

  static OutlineMetrics Of(double scale) {
    const auto scaled = [&](double size) { return static_cast<int>(std::lround(size * scale)); };
    return {scaled(16), scaled(9) | 1};
  }

  // Lines are indented as far as the text of their node.
  int NodeIndent(int level) const { return step * (level + 1); }
  int LineIndent(int level) const { return step * std::max(level, 1); }
  Rect Sign(const Rect& cell, int level) const {
    return {cell.x + level * step + (step - sign) / 2, cell.y + (cell.height - sign) / 2, sign, sign};
  }
  // A click here opens or closes the node: the column of the sign, over the full height of the row.
  Rect ClickArea(const Rect& cell, int level) const {
    return Rect{cell.x + level * step, cell.y, step, cell.height}.Intersected(cell);
  }
};

}  // namespace stockbook::sheet
