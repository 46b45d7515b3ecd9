// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <cstdint>

#include "stockbook/sheet/selection/selection.h"

namespace stockbook::com {

class SheetWindow;

// Reports changes in a SheetWindow to screen readers: of the current cell, the selection, a node opened or closed, rows
// or columns. It compares with what it reported last, so it may be called at any time.
class AccessibleNews {
 public:
  explicit AccessibleNews(const SheetWindow& window) : window_(window) {}

  // Something may have changed.
  void Tell();
  // The node was opened or closed, and nothing else changed.
  void TellNode(int row);
  // The window got the keyboard focus, which is at the current cell.
  void TellFocus() const;

 private:
  struct Table {
    int64_t revision = -1;
    int rows = 0;
    int columns = 0;

    bool operator==(const Table&) const = default;
  };

  Table Now() const;
  void TellSelection();
  void Send(DWORD event, LONG child) const;

  const SheetWindow& window_;
  Table told_;
  sheet::Selection told_selection_;
};

}  // namespace stockbook::com
