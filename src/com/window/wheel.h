// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <cstdint>

#include "stockbook/sheet/view/view.h"

namespace stockbook::com {

enum class WheelAxis { kVertical, kHorizontal };

// How far to scroll, in pixels of the view.
struct WheelStep {
  int64_t dx = 0;
  int64_t dy = 0;
};

// Turns the wheel's notches and the touchpad's fractions of them into pixels: a notch is as many rows as the user has
// set. Fractions are kept for slow turning.
class Wheel {
 public:
  // `keys` is the message's first word.
  WheelStep Turn(WheelAxis axis, WPARAM keys, const sheet::View& view);
  // Nothing is left over from before.
  void Stop() { rest_x_ = rest_y_ = 0; }

 private:
  double rest_x_ = 0;
  double rest_y_ = 0;
};

}  // namespace stockbook::com
