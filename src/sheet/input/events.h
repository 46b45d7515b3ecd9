// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "stockbook/platform/grid_observer.h"
#include "stockbook/sheet/geometry/rect.h"

namespace stockbook::sheet {

using platform::Modifiers;
using platform::MouseButton;

// A mouse event at a point of the view in device pixels. `button` is the one pressed or released, or held while moving.
struct MouseEvent {
  MouseButton button = MouseButton::kNone;
  Modifiers modifiers;
  Point at;
};

// The event for the grid's observer; `scale` is device pixels per pixel of 1/96 inch.
platform::GridMouseEvent ToGridEvent(const MouseEvent& event, double scale);

enum class Key : uint8_t {
  kUp,
  kDown,
  kLeft,
  kRight,
  kHome,
  kEnd,
  kPageUp,
  kPageDown,
  kPlus,
  kMinus,
  kA,
  kC,
  kInsert,
  kSpace,
  kEscape,
  kEnter,
  kMenu,
  kOther
};

struct KeyEvent {
  Key key = Key::kOther;
  Modifiers modifiers;
};

}  // namespace stockbook::sheet
