// SPDX-License-Identifier: MIT
#include "sheet/view/pixel_moves.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace stockbook::sheet {
namespace {

// The sheet's frame at the far edges of the view does not move, but is repainted with the parts that come in.
int FrameOf(const View& view) { return static_cast<int>(std::ceil(view.scale())); }

}  // namespace

// When scrolling in both directions, each direction moves in turn.
std::vector<PixelMove> PixelMoves::Follow(const View& view) {
  const Geometry geometry = view.geometry();
  const ScrollPosition before = std::exchange(shown_, geometry.scroll());
  if (before.y != shown_.y) FollowUp(view, before.y - shown_.y);
  if (before.x != shown_.x) FollowAcross(view, before.x - shown_.x);
  shown_columns_ = geometry.ColumnsWithin(0, geometry.view().width);
  return std::exchange(moves_, {});
}

void PixelMoves::FollowUp(const View& view, int64_t dy) {
  const Geometry geometry = view.geometry();
  const Size size = geometry.view();
  const int pinned = geometry.PinnedHeight();
  const int frame = FrameOf(view);
  // The background beside the cells does not move.
  const int width = std::min(size.width, geometry.CellsRect().width + frame);
  moves_.push_back({{0, pinned, width, size.height - pinned - frame}, 0, dy});
  moves_.push_back({{0, size.height - frame, width, frame}});
}

void PixelMoves::FollowAcross(const View& view, int64_t dx) {
  const Geometry geometry = view.geometry();
  const Size size = geometry.view();
  const int pinned = geometry.PinnedWidth();
  const int frame = FrameOf(view);
  moves_.push_back({{pinned, 0, size.width - pinned - frame, size.height}, dx, 0});
  moves_.push_back({{size.width - frame, 0, frame, size.height}});
  // Numbers in partly visible columns look different when cut off.
  const Span columns = geometry.ColumnsWithin(0, size.width);
  for (const int column : {shown_columns_.first, shown_columns_.last - 1, columns.first, columns.last - 1}) {
    if (column < columns.first || column >= columns.last) continue;
    const Rect rect = geometry.CellRect(0, column).Intersected(geometry.PaneOf(0, column));
    moves_.push_back({{rect.x, 0, rect.width, size.height}});
  }
}

}  // namespace stockbook::sheet
