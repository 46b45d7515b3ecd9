// SPDX-License-Identifier: MIT
#include "qt/ticked_menu.h"

#include <QAccessible>
#include <QAction>
#include <QKeyEvent>
#include <QMouseEvent>

namespace stockbook::qt {
namespace {

bool CanBeTicked(const QAction* item) { return item != nullptr && item->isCheckable() && item->isEnabled(); }

bool IsTick(int key) {
  return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Select;
}

}  // namespace

void TickedMenu::ShowTick(QAction& item, bool checked) {
  item.setChecked(checked);
  QAccessible::State changed;
  changed.checked = true;
  for (QObject* owner : item.associatedObjects()) {
    const auto* menu = qobject_cast<QMenu*>(owner);
    if (menu == nullptr) continue;
    QAccessibleStateChangeEvent event(owner, changed);
    event.setChild(static_cast<int>(menu->actions().indexOf(&item)));
    QAccessible::updateAccessibility(&event);
  }
}

void TickedMenu::keyPressEvent(QKeyEvent* event) {
  if (IsTick(event->key()) && CanBeTicked(activeAction())) {
    event->accept();
    activeAction()->trigger();
  } else {
    QMenu::keyPressEvent(event);
  }
}

void TickedMenu::mouseReleaseEvent(QMouseEvent* event) {
  QAction* item = actionAt(event->position().toPoint());
  if (item == activeAction() && CanBeTicked(item)) {
    event->accept();
    item->trigger();
  } else {
    QMenu::mouseReleaseEvent(event);
  }
}

}  // namespace stockbook::qt
