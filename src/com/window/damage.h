// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <vector>

#include "stockbook/sheet/geometry/rect.h"

namespace stockbook::com {

// The parts of a window that have to be painted anew.
class Damage {
 public:
  Damage() : region_(CreateRectRgn(0, 0, 0, 0)) {}
  ~Damage() { DeleteObject(region_); }
  Damage(const Damage&) = delete;
  Damage& operator=(const Damage&) = delete;

  void Add(const sheet::Rect& area);
  // What lies in the part moves with its pixels.
  void Move(const sheet::Rect& part, int dx, int dy);
  // A few rectangles that cover it, and afterwards nothing is damaged.
  std::vector<sheet::Rect> Take();

 private:
  HRGN region_;
};

}  // namespace stockbook::com
