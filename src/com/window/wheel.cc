// SPDX-License-Identifier: MIT
#include "com/window/wheel.h"

#include <cmath>

#include "sheet/input/line_step.h"

namespace stockbook::com {
namespace {

constexpr UINT kUsualLines = 3;
constexpr UINT kHorizontalSetting = 0x006C;  // SPI_GETWHEELSCROLLCHARS

// What one notch scrolls.
double NotchPixels(WheelAxis turned, WheelAxis scrolled, const sheet::View& view) {
  UINT lines = kUsualLines;
  SystemParametersInfoW(turned == WheelAxis::kVertical ? SPI_GETWHEELSCROLLLINES : kHorizontalSetting, 0, &lines, 0);
  const sheet::Rect body = view.geometry().BodyRect();
  if (lines == WHEEL_PAGESCROLL) return scrolled == WheelAxis::kVertical ? body.height : body.width;
  return static_cast<double>(lines) * sheet::LineStep(view);
}

int64_t WholePart(double& rest) {
  const double whole = std::trunc(rest);
  rest -= whole;
  return static_cast<int64_t>(whole);
}

}  // namespace

WheelStep Wheel::Turn(WheelAxis axis, WPARAM keys, const sheet::View& view) {
  const double notches = GET_WHEEL_DELTA_WPARAM(keys) / static_cast<double>(WHEEL_DELTA);
  // With Shift the wheel of a plain mouse scrolls sideways; a wheel that is turned up goes to the left then.
  const bool sideways = axis == WheelAxis::kVertical && (GET_KEYSTATE_WPARAM(keys) & MK_SHIFT) != 0;
  const double pixels = notches * NotchPixels(axis, sideways ? WheelAxis::kHorizontal : axis, view);
  if (axis == WheelAxis::kHorizontal) {
    rest_x_ += pixels;
  } else if (sideways) {
    rest_x_ -= pixels;
  } else {
    rest_y_ -= pixels;
  }
  return {WholePart(rest_x_), WholePart(rest_y_)};
}

}  // namespace stockbook::com
