// SPDX-License-Identifier: MIT
#include "qt/menu.h"

#include <QAction>
#include <QCursor>
#include <QMenu>

#include "qt/text.h"

namespace stockbook::qt {
namespace {

// Actions carry their place in `items`, which outlives the menu.
void Fill(QMenu& menu, const std::vector<platform::MenuItem>& items) {
  for (const platform::MenuItem& item : items) {
    if (!item.visible) continue;
    QAction* action = nullptr;
    if (item.separator) {
      action = menu.addSeparator();
    } else if (!item.items.empty()) {
      QMenu* submenu = menu.addMenu(ToQString(item.caption));
      Fill(*submenu, item.items);
      action = submenu->menuAction();
    } else {
      // A caption may be of two lines, as a column's is; a menu item has one.
      action = menu.addAction(
          ToQString(item.caption).replace(QLatin1Char('\n'), QLatin1Char(' ')).remove(QLatin1Char('\r')));
      action->setData(QVariant::fromValue(reinterpret_cast<quintptr>(&item)));
      action->setCheckable(item.checkable);
      action->setChecked(item.checked);
    }
    action->setEnabled(item.enabled);
  }
}

}  // namespace

platform::MenuChoice QtMenu::PopUp(const platform::MenuItem& menu) {
  // On the heap: a parent that goes away while the menu is open takes the menu with it.
  const QPointer<QMenu> popup = new QMenu(parent_);
  Fill(*popup, menu.items);
  const QAction* chosen = popup->exec(QCursor::pos());
  platform::MenuChoice choice;
  if (popup != nullptr && chosen != nullptr && chosen->data().isValid()) {
    const auto* item = reinterpret_cast<const platform::MenuItem*>(chosen->data().value<quintptr>());
    choice = {item->name, item->index};
  }
  delete popup;
  return choice;
}

}  // namespace stockbook::qt
