// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>
#include <cstdint>

#include "sheet/access/table_access.h"
#include "stockbook/base/api.h"
#include "stockbook/sheet/selection/selection.h"

namespace stockbook::qt {

class SheetWidget;

// Reports changes in a SheetWidget to screen readers: of the current cell, the selection, a node opened or closed, rows
// or columns. It compares with what it reported last, so it may be called at any time; without a screen reader it does
// nothing and costs nothing.
class STOCKBOOK_API AccessibleNews : private QAccessible::ActivationObserver {
 public:
  // `hand_over` receives every event.
  AccessibleNews(SheetWidget& view, QAccessible::UpdateHandler hand_over);
  ~AccessibleNews() override;
  AccessibleNews(const AccessibleNews&) = delete;
  AccessibleNews& operator=(const AccessibleNews&) = delete;

  // Something may have changed.
  void Tell();
  // The node was opened or closed, and nothing else changed.
  void TellNode(int row);
  // The view has got the keyboard focus, which is at the current cell.
  void TellFocus();

 private:
  struct Table {
    int64_t revision = -1;
    int rows = 0;
    int columns = 0;

    bool operator==(const Table&) const = default;
  };

  // What the row of the current cell is.
  struct Folding {
    int row = -1;
    sheet::NodeState node = sheet::NodeState::kNone;

    bool operator==(const Folding&) const = default;
  };

  void accessibilityActiveChanged(bool active) override;
  Table Now() const;
  Folding FoldingNow() const;
  void TellSelection();
  void TellFolding();
  // An event about a child of the view; -1 is the view itself.
  void Send(QAccessibleEvent& event, int child);
  void Send(QAccessible::Event type, int child);

  SheetWidget& view_;
  QAccessible::UpdateHandler hand_over_;
  bool active_;
  Table told_;
  sheet::Selection told_selection_;
  Folding told_folding_;
};

}  // namespace stockbook::qt
