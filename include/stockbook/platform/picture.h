// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "stockbook/base/api.h"

namespace stockbook::platform {

// A picture that a toolkit made; the toolkit-free rooms only pass it on. Sizes are in device-independent pixels.
class STOCKBOOK_API Picture {
 public:
  virtual ~Picture() = default;
  // Both in device-independent pixels, as the toolkit would show it unscaled.
  virtual int WidthPx() const = 0;
  virtual int HeightPx() const = 0;
};

// Shared with the host; an empty reference is no picture.
using PictureRef = std::shared_ptr<const Picture>;

}  // namespace stockbook::platform
