// SPDX-License-Identifier: MIT
#include "com/window/sheet_input.h"

#include <windowsx.h>

#include <utility>

#include "com/window/input_events.h"
#include "sheet/paint/cell_tip.h"

namespace stockbook::com {
namespace {

using sheet::MouseButton;

constexpr UINT_PTR kAutoScrollTimer = 1;
constexpr UINT kAutoScrollMs = 50;

}  // namespace

void SheetInput::ShowView(sheet::View& view) {
  view_ = &view;
  mouse_.emplace(view);
  keyboard_.emplace(view);
}

std::optional<LRESULT> SheetInput::Handle(UINT message, WPARAM wide, LPARAM data) {
  switch (message) {
    case WM_GETDLGCODE:
      return DialogCode(reinterpret_cast<const MSG*>(data));
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      if (PressKey(wide)) return 0;
      return std::nullopt;
    case WM_CONTEXTMENU:
      return OpenMenu(data);
    case WM_MOUSEHOVER:
      ShowTip(data);
      return 0;
    case WM_MOUSELEAVE:
      tip_.Hide();
      return 0;
    case WM_CAPTURECHANGED:
      if (std::exchange(capturing_, false)) LetGo();
      return 0;
    case WM_CANCELMODE:
      LetGo();
      return std::nullopt;
    case WM_TIMER:
      if (wide != kAutoScrollTimer) return std::nullopt;
      mouse_->AutoScroll();
      if (window_.handle() != nullptr) KeepAutoScrolling();
      return 0;
    default:
      return message >= WM_MOUSEFIRST && message <= WM_MOUSELAST ? HandleMouse(message, wide, data) : std::nullopt;
  }
}

std::optional<LRESULT> SheetInput::HandleMouse(UINT message, WPARAM wide, LPARAM data) {
  switch (message) {
    case WM_MOUSEMOVE:
      Move(wide, data);
      return 0;
    case WM_LBUTTONDOWN:
      Press(MouseButton::kLeft, wide, data);
      return 0;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
      Press(MouseButton::kRight, wide, data);
      return 0;
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
      Press(MouseButton::kMiddle, wide, data);
      return 0;
    case WM_LBUTTONDBLCLK:
      DoubleClick(wide, data);
      return 0;
    case WM_LBUTTONUP:
      Release(MouseButton::kLeft, wide, data);
      return 0;
    case WM_RBUTTONUP:
      Release(MouseButton::kRight, wide, data);
      return 0;
    case WM_MBUTTONUP:
      Release(MouseButton::kMiddle, wide, data);
      return 0;
    case WM_MOUSEWHEEL:
      Turn(WheelAxis::kVertical, wide);
      return 0;
    case WM_MOUSEHWHEEL:
      Turn(WheelAxis::kHorizontal, wide);
      return 0;
    default:
      return std::nullopt;
  }
}

// A dialog leaves the arrows to the sheet, and the keys that stand for a double click and end a drag.
LRESULT SheetInput::DialogCode(const MSG* message) const {
  const bool ends = capturing_ && message != nullptr && message->wParam == VK_ESCAPE;
  const bool opens = message != nullptr && message->wParam == VK_RETURN;
  return DLGC_WANTARROWS | DLGC_WANTCHARS | (ends || opens ? DLGC_WANTMESSAGE : 0);
}

// The right button is not captured: it opens a menu, which has the mouse then.
void SheetInput::Press(MouseButton button, WPARAM keys, LPARAM place) {
  tip_.Hide();
  const HWND window = window_.handle();
  if (GetFocus() != window) SetFocus(window);
  if (window_.handle() == nullptr) return;
  if (button == MouseButton::kLeft) {
    SetCapture(window);
    capturing_ = true;
  }
  mouse_->Press(MouseEventOf(button, keys, place));
}

void SheetInput::DoubleClick(WPARAM keys, LPARAM place) {
  tip_.Hide();
  mouse_->DoubleClick(MouseEventOf(MouseButton::kLeft, keys, place));
}

void SheetInput::Release(MouseButton button, WPARAM keys, LPARAM place) {
  if (button == MouseButton::kLeft && std::exchange(capturing_, false)) ReleaseCapture();
  mouse_->Release(MouseEventOf(button, keys, place));
  if (window_.handle() != nullptr) KeepAutoScrolling();
}

void SheetInput::Move(WPARAM keys, LPARAM place) {
  const sheet::MouseEvent event = MouseMoveOf(keys, place);
  tip_.MouseAt(event.at);
  // Whoever opened a window of his own when the button went down has got the message of its going up.
  if (capturing_ && (keys & MK_LBUTTON) == 0) LetGo();
  TRACKMOUSEEVENT track{sizeof(TRACKMOUSEEVENT), TME_LEAVE | TME_HOVER, window_.handle(), HOVER_DEFAULT};
  TrackMouseEvent(&track);
  mouse_->Move(event);
  if (window_.handle() != nullptr) KeepAutoScrolling();
}

void SheetInput::Turn(WheelAxis axis, WPARAM keys) {
  const WheelStep step = wheel_.Turn(axis, keys, *view_);
  mouse_->Wheel(step.dx, step.dy);
}

bool SheetInput::PressKey(WPARAM key) {
  tip_.Hide();
  // The key that ends a drag must not also close a dialog around the grid.
  if (key == VK_ESCAPE && (mouse_->Cancel() || capturing_)) {
    LetGo();
    return true;
  }
  return keyboard_->Press(KeyEventOf(key));
}

// The right button already opens the menu when it is pressed. Here only the keyboard asks: for the current cell, or
// with Ctrl for the caption of its column.
std::optional<LRESULT> SheetInput::OpenMenu(LPARAM place) {
  constexpr LPARAM kByKey = -1;
  if (place != kByKey) {
    if (view_->IsObserved()) return 0;
    return std::nullopt;
  }
  const int16_t control = GetKeyState(VK_CONTROL) < 0 ? sheet::Modifiers::kControl : 0;
  const bool nested = std::exchange(menu_by_key_, true);
  const bool opened = keyboard_->Press({sheet::Key::kMenu, {control}});
  menu_by_key_ = nested;
  if (opened) return 0;
  return std::nullopt;
}

void SheetInput::ShowTip(LPARAM place) {
  const sheet::Point at{GET_X_LPARAM(place), GET_Y_LPARAM(place)};
  if (capturing_ || !view_->sheet().Redraw()) return;
  const sheet::CellTip tip = sheet::CellTip::At(*view_, measure_, at);
  tip_.Show(window_.handle(), tip.text, tip.cell, view_->scale());
}

void SheetInput::LetGo() {
  mouse_->Cancel();
  wheel_.Stop();
  if (std::exchange(auto_scrolling_, false)) KillTimer(window_.handle(), kAutoScrollTimer);
  if (std::exchange(capturing_, false)) ReleaseCapture();
}

// A timer that is set again begins anew, and would never come while the mouse keeps moving.
void SheetInput::KeepAutoScrolling() {
  const bool wanted = mouse_->WantsAutoScroll();
  if (std::exchange(auto_scrolling_, wanted) == wanted) return;
  if (wanted) {
    SetTimer(window_.handle(), kAutoScrollTimer, kAutoScrollMs, nullptr);
  } else {
    KillTimer(window_.handle(), kAutoScrollTimer);
  }
}

}  // namespace stockbook::com
