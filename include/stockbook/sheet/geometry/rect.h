// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

namespace stockbook::sheet {

// A place in pixels.
struct Point {
  int x = 0;
  int y = 0;

  bool operator==(const Point&) const = default;
};

// Width and height in pixels.
struct Size {
  int width = 0;
  int height = 0;

  bool operator==(const Size&) const = default;
};

// Device pixels [x, right()) by [y, bottom()). A plain value; empty if it has no area.
struct Rect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  // Both are the first pixel behind it.
  int right() const { return x + width; }
  int bottom() const { return y + height; }
  // True below 0, too.
  bool IsEmpty() const { return width <= 0 || height <= 0; }
  // False for its right and bottom edge.
  bool Contains(Point point) const { return point.x >= x && point.x < right() && point.y >= y && point.y < bottom(); }
  // True for itself; an empty one may be contained, too.
  bool Contains(const Rect& inner) const {
    return inner.x >= x && inner.y >= y && inner.right() <= right() && inner.bottom() <= bottom();
  }
  // Whether they have a pixel in common; false for an empty one.
  bool Intersects(const Rect& other) const {
    return !IsEmpty() && !other.IsEmpty() && x < other.right() && other.x < right() && y < other.bottom() &&
           other.y < bottom();
  }
  // What they have in common; empty, with no size below 0, where that is nothing.
  Rect Intersected(const Rect& other) const {
    const int left = std::max(x, other.x);
    const int top = std::max(y, other.y);
    return {left, top, std::max(0, std::min(right(), other.right()) - left),
            std::max(0, std::min(bottom(), other.bottom()) - top)};
  }
  // Smaller by so much on each side; larger for numbers below 0, and empty where nothing is left.
  Rect Inset(int dx, int dy) const { return {x + dx, y + dy, width - 2 * dx, height - 2 * dy}; }

  bool operator==(const Rect&) const = default;
};

}  // namespace stockbook::sheet
