// SPDX-License-Identifier: MIT
#include "com/window/drawn_picture.h"

#include <algorithm>

namespace stockbook::com {
namespace {

constexpr size_t kMostDrawn = 6;
constexpr int kMostSide = 1024;  // larger ones are drawn at this size, and scaled by whoever shows them

}  // namespace

const Pixels& DrawnPicture::At(int width, int height) const {
  width = std::clamp(width, 1, kMostSide);
  height = std::clamp(height, 1, kMostSide);
  const auto found = std::find_if(drawn_.begin(), drawn_.end(), [&](const Pixels& pixels) {
    return pixels.width == width && pixels.height == height;
  });
  if (found != drawn_.end()) return *found;
  if (drawn_.size() == kMostDrawn) drawn_.erase(drawn_.begin());
  return drawn_.emplace_back(DrawShapes(shapes_, units_, width, height));
}

}  // namespace stockbook::com
