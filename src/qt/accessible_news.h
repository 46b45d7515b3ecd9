// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "sheet/selection/selection.h"

namespace stockbook::qt {

class GridView;

// Tells screen readers what has changed in a GridView: another current cell, another selection, a node opened or
// closed, other rows or columns. It compares with what it told last, so it may be asked at any time; while nobody
// listens it tells nothing and costs nothing.
class AccessibleNews {
 public:
  explicit AccessibleNews(GridView& view) : view_(view) {}

  // Something may have changed.
  void Tell();
  // The node was opened or closed, and that alone.
  void TellNode(int row);
  // The view got the keys: the current cell is where they go.
  void TellFocus();

 private:
  struct Table {
    int64_t revision = -1;
    int rows = 0;
    int columns = 0;

    bool operator==(const Table&) const = default;
  };

  Table Now() const;
  void TellSelection();

  GridView& view_;
  Table told_;
  sheet::Selection told_selection_;
};

}  // namespace stockbook::qt
