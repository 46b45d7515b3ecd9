// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string>

#include "stockbook/sheet/geometry/rect.h"

namespace stockbook::com {

// A tooltip of the system's that is shown when it is told to, and hidden when the mouse leaves its area.
class ToolTip {
 public:
  ToolTip() = default;
  ~ToolTip();
  ToolTip(const ToolTip&) = delete;
  ToolTip& operator=(const ToolTip&) = delete;

  // Beside the mouse; lines that are too wide are wrapped. `area` of the owner is what it is about.
  void Show(HWND owner, const std::string& text, const sheet::Rect& area, double scale);
  void Hide();
  bool IsShown() const { return shown_; }
  // The mouse is there now, in the owner.
  void MouseAt(sheet::Point at);

 private:
  void Place(const std::string& text, double scale);

  HWND tip_ = nullptr;
  HWND owner_ = nullptr;
  sheet::Rect area_;
  bool shown_ = false;
};

}  // namespace stockbook::com
