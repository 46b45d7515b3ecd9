// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "stockbook/base/scope_exit.h"
#include "stockbook/platform/grid_busy.h"

namespace stockbook::platform {

// The returned guards put back what they found when they go.

// Redraw is off.
[[nodiscard]] inline auto RedrawOff(GridBusy& grid) {
  const bool redraw = grid.Redraw();
  grid.SetRedraw(false);
  return base::ScopeExit([&grid, redraw] { grid.SetRedraw(redraw); });
}

// The tag holds a busy marker.
[[nodiscard]] inline auto BusyTag(GridBusy& grid, std::string_view marker) {
  std::string tag(grid.Tag());
  grid.SetTag(marker);
  return base::ScopeExit([&grid, tag = std::move(tag)] { grid.SetTag(tag); });
}

// The mouse pointer may change.
[[nodiscard]] inline auto PointerKept(GridBusy& grid) {
  return base::ScopeExit([&grid, pointer = grid.Pointer()] {
    if (grid.Pointer() != pointer) grid.SetPointer(pointer);
  });
}

}  // namespace stockbook::platform
