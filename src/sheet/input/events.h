// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "sheet/paint/rect.h"

namespace stockbook::sheet {

enum class MouseButton : int16_t { kNone = 0, kLeft = 1, kRight = 2, kMiddle = 4 };

// Bits of the modifier keys, as the sheet's mouse events report them.
struct Modifiers {
  static constexpr int16_t kShift = 1;
  static constexpr int16_t kControl = 2;
  static constexpr int16_t kAlt = 4;

  int16_t bits = 0;

  bool Shift() const { return (bits & kShift) != 0; }
  bool Control() const { return (bits & kControl) != 0; }
  bool Alt() const { return (bits & kAlt) != 0; }
};

// A mouse event at a point of the view in device pixels. `button` is the one pressed or released, or held while moving.
struct MouseEvent {
  MouseButton button = MouseButton::kNone;
  Modifiers modifiers;
  Point at;
};

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
