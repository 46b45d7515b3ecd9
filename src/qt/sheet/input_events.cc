// SPDX-License-Identifier: MIT
#include "qt/sheet/input_events.h"

#include <cmath>
#include <utility>

namespace stockbook::qt {
namespace {

sheet::Modifiers ModifiersOf(Qt::KeyboardModifiers modifiers) {
  int bits = 0;
  if (modifiers.testFlag(Qt::ShiftModifier)) bits |= sheet::Modifiers::kShift;
  if (modifiers.testFlag(Qt::ControlModifier)) bits |= sheet::Modifiers::kControl;
  if (modifiers.testFlag(Qt::AltModifier)) bits |= sheet::Modifiers::kAlt;
  return {static_cast<int16_t>(bits)};
}

sheet::Key KeyOf(int key) {
  using sheet::Key;
  static constexpr std::pair<int, Key> kKeys[] = {
      {Qt::Key_Up, Key::kUp},         {Qt::Key_Down, Key::kDown},
      {Qt::Key_Left, Key::kLeft},     {Qt::Key_Right, Key::kRight},
      {Qt::Key_Home, Key::kHome},     {Qt::Key_End, Key::kEnd},
      {Qt::Key_PageUp, Key::kPageUp}, {Qt::Key_PageDown, Key::kPageDown},
      {Qt::Key_Plus, Key::kPlus},     {Qt::Key_Minus, Key::kMinus},
      {Qt::Key_A, Key::kA},           {Qt::Key_C, Key::kC},
      {Qt::Key_Insert, Key::kInsert}, {Qt::Key_Space, Key::kSpace},
      {Qt::Key_Return, Key::kEnter},  {Qt::Key_Enter, Key::kEnter},
      {Qt::Key_Escape, Key::kEscape},
  };
  for (const auto& [code, named] : kKeys) {
    if (code == key) return named;
  }
  return Key::kOther;
}

sheet::MouseButton ButtonOf(Qt::MouseButton button) {
  switch (button) {
    case Qt::LeftButton:
      return sheet::MouseButton::kLeft;
    case Qt::RightButton:
      return sheet::MouseButton::kRight;
    case Qt::MiddleButton:
      return sheet::MouseButton::kMiddle;
    default:
      return sheet::MouseButton::kNone;
  }
}

Qt::MouseButton HeldButton(Qt::MouseButtons buttons) {
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
    if (buttons.testFlag(button)) return button;
  }
  return Qt::NoButton;
}

}  // namespace

sheet::KeyEvent ToSheet(const QKeyEvent& event) { return {KeyOf(event.key()), ModifiersOf(event.modifiers())}; }

sheet::MouseEvent ToSheet(const QMouseEvent& event, double scale) {
  const bool moves = event.type() == QEvent::MouseMove;
  const QPointF at = event.position() * scale;
  return {ButtonOf(moves ? HeldButton(event.buttons()) : event.button()),
          ModifiersOf(event.modifiers()),
          {static_cast<int>(std::floor(at.x())), static_cast<int>(std::floor(at.y()))}};
}

}  // namespace stockbook::qt
