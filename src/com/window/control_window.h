// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>

#include "com/window/back_buffer.h"
#include "com/window/frames.h"
#include "com/window/sheet_window.h"
#include "com/window/tool_tip.h"
#include "com/window/window.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::com {

// The control as a window in its container's: the header band and the frames, and in them the window of the sheet.
class ControlWindow : public Window {
 public:
  ControlWindow(WindowHost& host, control::Stockbook& control, sheet::GridSheet& sheet);

  // The window of the sheet comes with it; throws platform::Error.
  void Open(HWND parent, const RECT& place);
  SheetWindow& sheet_window() { return *sheet_window_; }
  // The control's frames, caption or mark have changed.
  void UpdateFrames();
  // What the container lends has changed.
  void SetLooks(FrameLooks looks);

 protected:
  WindowStyle Style() const override;
  std::optional<LRESULT> Handle(UINT message, WPARAM wide, LPARAM data) override;

 private:
  std::optional<LRESULT> HandleMouse(UINT message, LPARAM data);
  void Arrange();
  void PaintWindow();
  void ShowTip(LPARAM place);

  control::Stockbook& control_;
  FrameLooks looks_;
  std::shared_ptr<SheetWindow> sheet_window_;
  GdiFonts fonts_;
  BackBuffer band_;
  FrameLayout layout_;
  ToolTip tip_;
};

}  // namespace stockbook::com
