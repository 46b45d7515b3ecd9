// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <optional>

#include "com/window/tool_tip.h"
#include "com/window/wheel.h"
#include "com/window/window.h"
#include "sheet/input/keyboard.h"
#include "sheet/input/mouse.h"
#include "stockbook/sheet/geometry/text_measure.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::com {

// Forwards a window's keys, mouse and wheel to the view that it shows, and shows what is cut off under the mouse. The
// window may be destroyed by what it forwards.
class SheetInput {
 public:
  // Both outlive it.
  SheetInput(Window& window, sheet::TextMeasure& measure) : window_(window), measure_(measure) {}

  // Makes the view the one that hears.
  void ShowView(sheet::View& view);
  // The result of the message, or nothing if it is none of keys, mouse and wheel, or means nothing to the sheet.
  std::optional<LRESULT> Handle(UINT message, WPARAM wide, LPARAM data);
  // Ends the current mouse drag.
  void LetGo();
  void HideTip() { tip_.Hide(); }
  // A menu was asked for by a key, so it opens below the current cell.
  bool IsMenuByKey() const { return menu_by_key_; }

 private:
  std::optional<LRESULT> HandleMouse(UINT message, WPARAM wide, LPARAM data);
  LRESULT DialogCode(const MSG* message) const;
  void Press(sheet::MouseButton button, WPARAM keys, LPARAM place);
  void DoubleClick(WPARAM keys, LPARAM place);
  void Release(sheet::MouseButton button, WPARAM keys, LPARAM place);
  void Move(WPARAM keys, LPARAM place);
  void Turn(WheelAxis axis, WPARAM keys);
  bool PressKey(WPARAM key);
  std::optional<LRESULT> OpenMenu(LPARAM place);
  void ShowTip(LPARAM place);
  void KeepAutoScrolling();

  Window& window_;
  sheet::TextMeasure& measure_;
  sheet::View* view_ = nullptr;
  std::optional<sheet::Mouse> mouse_;
  std::optional<sheet::Keyboard> keyboard_;
  ToolTip tip_;
  Wheel wheel_;
  bool menu_by_key_ = false;
  bool capturing_ = false;
  bool auto_scrolling_ = false;
};

}  // namespace stockbook::com
