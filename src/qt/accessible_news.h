// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>
#include <cstdint>

#include "sheet/selection/selection.h"

namespace stockbook::qt {

class GridView;

// Tells screen readers what has changed in a GridView: another current cell, another selection, a node opened or
// closed, other rows or columns. It compares with what it told last, so it may be asked at any time; while nobody
// listens it tells nothing and costs nothing.
class AccessibleNews : private QAccessible::ActivationObserver {
 public:
  // `hand_over` gets every event.
  AccessibleNews(GridView& view, QAccessible::UpdateHandler hand_over);
  ~AccessibleNews() override;
  AccessibleNews(const AccessibleNews&) = delete;
  AccessibleNews& operator=(const AccessibleNews&) = delete;

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

  void accessibilityActiveChanged(bool active) override;
  Table Now() const;
  void TellSelection();
  // About a child of the view; -1 is the view itself.
  void Send(QAccessibleEvent& event, int child);
  void Send(QAccessible::Event type, int child);

  GridView& view_;
  QAccessible::UpdateHandler hand_over_;
  bool active_;
  Table told_;
  sheet::Selection told_selection_;
};

}  // namespace stockbook::qt
