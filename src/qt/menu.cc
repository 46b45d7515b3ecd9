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

using Hints = std::map<std::string, QString>;

// What follows a tab stands in the column of the keys.
QString TextOf(const platform::MenuItem& item, const Hints& hints) {
  auto hint = hints.find(item.name);
  if (hint == hints.end()) hint = hints.find(item.name + std::to_string(item.index));
  return hint == hints.end() ? CaptionOf(item) : CaptionOf(item) + QLatin1Char('\t') + hint->second;
}

// Every action that can be chosen carries its index in `choices`.
void Fill(QMenu& menu, const std::vector<platform::MenuItem>& items, const Hints& hints,
          std::vector<platform::MenuChoice>& choices) {
  for (const platform::MenuItem& item : items) {
    if (!item.visible) continue;
    QAction* action = nullptr;
    if (item.separator) {
      action = menu.addSeparator();
    } else if (!item.items.empty()) {
      QMenu* submenu = menu.addMenu(CaptionOf(item));
      Fill(*submenu, item.items, hints, choices);
      action = submenu->menuAction();
    } else {
      action = menu.addAction(TextOf(item, hints));
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
  Fill(*popup, menu.items, hints_, choices);
  const QAction* chosen = popup->exec(place_ ? place_() : QCursor::pos());
  platform::MenuChoice choice;
  if (popup != nullptr && chosen != nullptr && chosen->data().isValid()) choice = choices[chosen->data().toULongLong()];
  delete popup;
  return choice;
}

}  // namespace stockbook::qt
