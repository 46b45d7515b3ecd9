// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "stockbook/platform/picture.h"

namespace stockbook::com {

// An image: 0xAARRGGBB with the colours multiplied by alpha, row by row from the top.
struct Pixels {
  int width = 0;
  int height = 0;
  std::vector<uint32_t> values;

  bool IsEmpty() const { return width <= 0 || height <= 0; }
  uint32_t At(int x, int y) const {
    return values[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
  }
};

// A picture that can be had as pixels of any size, which is all that painting asks of it.
class PixelPicture : public platform::Picture {
 public:
  // The whole picture at that size in device pixels. Valid until the next call.
  virtual const Pixels& At(int width, int height) const = 0;
};

}  // namespace stockbook::com
