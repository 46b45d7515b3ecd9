// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "sheet/paint/canvas.h"
#include "stockbook/sheet/print/page_setup.h"

namespace stockbook::sheet {

// Where something stands on a page, in pixels of 1/96 inch from the page's top left corner, and the factor by which it
// is scaled down.
struct PagePlace {
  double x = 0;
  double y = 0;
  double zoom = 1;
};

// One page of paper. This is all of printing that a toolkit implements.
class PageTarget {
 public:
  // Pixels of a canvas for one of 1/96 inch: fine enough for every printer, whatever its own units are.
  static constexpr double kScale = 8;

  virtual ~PageTarget() = default;

  // Calls `paint` with a canvas that has its origin at the place. Nothing is painted outside of the room, which begins
  // there and is in pixels of 1/96 inch before scaling down.
  virtual void Paint(const PagePlace& place, const PageRoom& room, const std::function<void(Canvas&)>& paint) = 0;
};

}  // namespace stockbook::sheet
