// SPDX-License-Identifier: MIT
#include "com/window/input_events.h"

#include <windowsx.h>

#include <utility>

namespace stockbook::com {
namespace {

using sheet::Key;
using sheet::Modifiers;
using sheet::MouseButton;

bool IsHeld(int virtual_key) { return GetKeyState(virtual_key) < 0; }

Modifiers HeldModifiers() {
  const int bits = (IsHeld(VK_SHIFT) ? Modifiers::kShift : 0) | (IsHeld(VK_CONTROL) ? Modifiers::kControl : 0) |
                   (IsHeld(VK_MENU) ? Modifiers::kAlt : 0);
  return {static_cast<int16_t>(bits)};
}

Modifiers ModifiersOfMouse(WPARAM keys) {
  const int bits = ((keys & MK_SHIFT) != 0 ? Modifiers::kShift : 0) |
                   ((keys & MK_CONTROL) != 0 ? Modifiers::kControl : 0) | (IsHeld(VK_MENU) ? Modifiers::kAlt : 0);
  return {static_cast<int16_t>(bits)};
}

Key NamedKey(WPARAM virtual_key) {
  static constexpr std::pair<WPARAM, Key> kKeys[] = {
      {VK_UP, Key::kUp},
      {VK_DOWN, Key::kDown},
      {VK_LEFT, Key::kLeft},
      {VK_RIGHT, Key::kRight},
      {VK_HOME, Key::kHome},
      {VK_END, Key::kEnd},
      {VK_PRIOR, Key::kPageUp},
      {VK_NEXT, Key::kPageDown},
      {VK_ADD, Key::kPlus},
      {VK_SUBTRACT, Key::kMinus},
      {VK_OEM_MINUS, Key::kMinus},
      {'A', Key::kA},
      {'C', Key::kC},
      {VK_INSERT, Key::kInsert},
      {VK_SPACE, Key::kSpace},
      {VK_RETURN, Key::kEnter},
      {VK_ESCAPE, Key::kEscape},
  };
  for (const auto& [code, named] : kKeys) {
    if (code == virtual_key) return named;
  }
  // The key beside the letters that has the plus sign.
  return virtual_key == VK_OEM_PLUS && (IsHeld(VK_SHIFT) || IsHeld(VK_CONTROL)) ? Key::kPlus : Key::kOther;
}

MouseButton HeldMouseButton(WPARAM keys) {
  if ((keys & MK_LBUTTON) != 0) return MouseButton::kLeft;
  if ((keys & MK_RBUTTON) != 0) return MouseButton::kRight;
  return (keys & MK_MBUTTON) != 0 ? MouseButton::kMiddle : MouseButton::kNone;
}

}  // namespace

sheet::KeyEvent KeyEventOf(WPARAM virtual_key) { return {NamedKey(virtual_key), HeldModifiers()}; }

sheet::MouseEvent MouseEventOf(MouseButton button, WPARAM keys, LPARAM place) {
  return {button, ModifiersOfMouse(keys), {GET_X_LPARAM(place), GET_Y_LPARAM(place)}};
}

sheet::MouseEvent MouseMoveOf(WPARAM keys, LPARAM place) { return MouseEventOf(HeldMouseButton(keys), keys, place); }

}  // namespace stockbook::com
