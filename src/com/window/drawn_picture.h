// SPDX-License-Identifier: MIT
#pragma once

#include <utility>
#include <vector>

#include "com/automation/pixel_picture.h"
#include "com/window/shapes.h"

namespace stockbook::com {

// A picture of shapes, drawn anew for every size that is asked for, so that it is sharp at every scale; the last few
// sizes are kept.
class DrawnPicture : public PixelPicture {
 public:
  // `units` is the side of the shapes' field, and of the picture in device-independent pixels.
  DrawnPicture(int units, std::vector<Shape> shapes) : units_(units), shapes_(std::move(shapes)) {}

  int WidthPx() const override { return units_; }
  int HeightPx() const override { return units_; }
  const Pixels& At(int width, int height) const override;

 private:
  int units_;
  std::vector<Shape> shapes_;
  mutable std::vector<Pixels> drawn_;
};

}  // namespace stockbook::com
