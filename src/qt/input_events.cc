// SPDX-License-Identifier: MIT
#include "qt/input_events.h"

#include <cmath>

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
  switch (key) {
    case Qt::Key_Up:
      return sheet::Key::kUp;
    case Qt::Key_Down:
      return sheet::Key::kDown;
    case Qt::Key_Left:
      return sheet::Key::kLeft;
    case Qt::Key_Right:
      return sheet::Key::kRight;
    case Qt::Key_Home:
      return sheet::Key::kHome;
    case Qt::Key_End:
      return sheet::Key::kEnd;
    case Qt::Key_PageUp:
      return sheet::Key::kPageUp;
    case Qt::Key_PageDown:
      return sheet::Key::kPageDown;
    case Qt::Key_Plus:
      return sheet::Key::kPlus;
    case Qt::Key_Minus:
      return sheet::Key::kMinus;
    case Qt::Key_A:
      return sheet::Key::kA;
    case Qt::Key_C:
      return sheet::Key::kC;
    case Qt::Key_Insert:
      return sheet::Key::kInsert;
    case Qt::Key_Space:
      return sheet::Key::kSpace;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return sheet::Key::kEnter;
    case Qt::Key_Escape:
      return sheet::Key::kEscape;
    default:
      return sheet::Key::kOther;
  }
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
