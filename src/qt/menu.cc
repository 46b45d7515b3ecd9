// SPDX-License-Identifier: MIT
#include "qt/menu.h"

#include <QAction>
#include <QCursor>
#include <QMenu>
#include <vector>

#include "base/text.h"
#include "qt/text.h"

namespace stockbook::qt {
namespace {

// A column caption may have two lines; a menu item has one.
QString CaptionOf(const platform::MenuItem& item) { return ToQString(base::OneLine(item.caption, " ")); }

// Every action that can be chosen carries its index in `choices`.
void Fill(QMenu& menu, const std::vector<platform::MenuItem>& items, std::vector<platform::MenuChoice>& choices) {
  for (const platform::MenuItem& item : items) {
    if (!item.visible) continue;
    QAction* action = nullptr;
    if (item.separator) {
      action = menu.addSeparator();
    } else if (!item.items.empty()) {
      QMenu* submenu = menu.addMenu(CaptionOf(item));
      Fill(*submenu, item.items, choices);
      action = submenu->menuAction();
    } else {
      action = menu.addAction(CaptionOf(item));
      action->setData(static_cast<qulonglong>(choices.size()));
      action->setCheckable(item.checkable);
      action->setChecked(item.checked);
      choices.push_back({item.name, item.index});
    }
    action->setEnabled(item.enabled);
  }
}

}  // namespace

platform::MenuChoice QtMenu::PopUp(const platform::MenuItem& menu) {
  // On the heap, because a parent deleted while the menu is open deletes the menu too.
  const QPointer<QMenu> popup = new QMenu(parent_);
  std::vector<platform::MenuChoice> choices;
  Fill(*popup, menu.items, choices);
  const QAction* chosen = popup->exec(place_ ? place_() : QCursor::pos());
  platform::MenuChoice choice;
  if (popup != nullptr && chosen != nullptr && chosen->data().isValid()) choice = choices[chosen->data().toULongLong()];
  delete popup;
  return choice;
}

}  // namespace stockbook::qt
