// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>

#include "sheet/view/bar_scale.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::com {

// The two scroll bars of a window that shows a view: there while the sheet wants them and there is something to scroll.
class ScrollBars {
 public:
  // Shows and hides the bars, which changes the size of the window's client area, and places them where the view is.
  void Update(HWND window, const sheet::View& view);
  // Where a message of one of the bars, SB_HORZ or SB_VERT, wants the view to be.
  std::optional<int64_t> Wanted(HWND window, int bar, WPARAM message, const sheet::View& view) const;

 private:
  void ShowAsNeeded(HWND window, const sheet::View& view);
  const sheet::BarScale& ScaleOfBar(int bar) const { return bar == SB_HORZ ? x_scale_ : y_scale_; }

  sheet::BarScale x_scale_;
  sheet::BarScale y_scale_;
  bool updating_ = false;
};

}  // namespace stockbook::com
