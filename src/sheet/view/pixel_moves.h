// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/sheet/geometry/geometry.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::sheet {

// One step of following a scrolled view: the pixels of the area move by the distance, and what comes into view is to be
// painted; without a distance all of the area is.
struct PixelMove {
  Rect area;
  int64_t dx = 0;
  int64_t dy = 0;

  bool IsDamage() const { return dx == 0 && dy == 0; }
};

// What a window that keeps its pixels does when its view has scrolled.
class STOCKBOOK_API PixelMoves {
 public:
  // The steps, to be done in their order, from what was in the window at the last call to what is to be there now.
  std::vector<PixelMove> Follow(const View& view);

 private:
  void FollowUp(const View& view, int64_t dy);
  void FollowAcross(const View& view, int64_t dx);

  std::vector<PixelMove> moves_;
  ScrollPosition shown_;
  Span shown_columns_;  // those that scroll
};

}  // namespace stockbook::sheet
