// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace stockbook::sheet {

// A twip is 1/1440 inch, a pixel at scale 1 is 1/96 inch.
inline constexpr double kTwipsPerPixel = 15.0;

// Converts a length to device pixels. A positive length gives at least one pixel.
inline int64_t ToPixels(int32_t twips, double scale) {
  if (twips <= 0) return 0;
  return std::max<int64_t>(1, std::llround(twips * (scale / kTwipsPerPixel)));
}

}  // namespace stockbook::sheet
