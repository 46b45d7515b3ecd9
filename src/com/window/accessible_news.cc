// SPDX-License-Identifier: MIT
#include "com/window/accessible_news.h"

#include <utility>

#include "com/window/accessible_child.h"
#include "com/window/sheet_window.h"
#include "sheet/access/table_access.h"

namespace stockbook::com {

void AccessibleNews::Send(DWORD event, LONG child) const {
  if (window_.handle() != nullptr) NotifyWinEvent(event, window_.handle(), OBJID_CLIENT, child);
}

AccessibleNews::Table AccessibleNews::Now() const {
  const sheet::TableAccess table(window_.view());
  return {window_.sheet().Revision(), table.RowCount(), table.ColumnCount()};
}

void AccessibleNews::Tell() {
  const Table now = Now();
  const bool reset = std::exchange(told_, now) != now;
  if (reset) Send(EVENT_OBJECT_REORDER, CHILDID_SELF);
  if (reset || window_.view().selection() != told_selection_) TellSelection();
}

void AccessibleNews::TellSelection() {
  const sheet::Selection now = window_.view().selection();
  const sheet::Selection before = std::exchange(told_selection_, now);
  if (now.current != before.current) TellFocus();
  if (now.IsRange() || before.IsRange()) {
    Send(EVENT_OBJECT_SELECTIONWITHIN, CHILDID_SELF);
  } else if (now.current != before.current) {
    Send(EVENT_OBJECT_SELECTION, ChildIdOf(window_.view(), now.current));
  }
}

void AccessibleNews::TellFocus() const {
  if (window_.HasFocus()) Send(EVENT_OBJECT_FOCUS, ChildIdOf(window_.view(), window_.view().selection().current));
}

void AccessibleNews::TellNode(int row) {
  told_ = Now();
  const sheet::CellPosition current = window_.view().selection().current;
  const int column = current.row == row ? current.column : window_.sheet().OutlineCol();
  Send(EVENT_OBJECT_STATECHANGE, ChildIdOf(window_.view(), {row, column}));
  Send(EVENT_OBJECT_REORDER, CHILDID_SELF);
}

}  // namespace stockbook::com
