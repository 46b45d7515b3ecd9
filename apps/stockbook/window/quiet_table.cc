// SPDX-License-Identifier: MIT
#include "stockbook/window/quiet_table.h"

#include <QAccessible>
#include <QFocusEvent>

namespace stockbook::app {

// All that QTableView adds here is the announcement.
void QuietTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  if (hasFocus()) {
    QTableView::currentChanged(current, previous);
  } else {
    QAbstractItemView::currentChanged(current, previous);
  }
}

void QuietTable::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  // The toolkit says itself, after this event, that the table has the focus; the cell is to be the last word.
  QMetaObject::invokeMethod(this, &QuietTable::TellFocus, Qt::QueuedConnection);
}

void QuietTable::TellFocus() {
  if (!QAccessible::isActive() || !hasFocus() || !currentIndex().isValid()) return;
  QAccessibleInterface* self = QAccessible::queryAccessibleInterface(this);
  QAccessibleTableInterface* table = self == nullptr ? nullptr : self->tableInterface();
  QAccessibleInterface* cell =
      table == nullptr ? nullptr : table->cellAt(currentIndex().row(), currentIndex().column());
  if (cell == nullptr) return;
  QAccessibleEvent told(cell, QAccessible::Focus);
  QAccessible::updateAccessibility(&told);
}

}  // namespace stockbook::app
