// SPDX-License-Identifier: MIT
#include "stockbook/window/window_menus.h"

namespace stockbook::app {

WindowMenus::WindowMenus(QMenuBar& bar) : QObject(&bar), bar_(bar) {
  AddTopMenu(tr("文件(&F)"), MenuPlace::kFileOpen, MenuPlace::kFileEnd);
  AddTopMenu(tr("编辑(&E)"), MenuPlace::kEditCopy, MenuPlace::kEditUndo);
  AddTopMenu(tr("查看(&V)"), MenuPlace::kViewJournal, MenuPlace::kViewMemory);
  AddTopMenu(tr("转到(&G)"), MenuPlace::kGoBack, MenuPlace::kGoRow);
  AddTopMenu(tr("帮助(&H)"), MenuPlace::kHelp, MenuPlace::kHelp);
}

// The menu shows no separator beside an empty place.
QMenu* WindowMenus::AddTopMenu(const QString& text, MenuPlace first, MenuPlace last) {
  QMenu* menu = bar_.addMenu(text);
  for (int place = static_cast<int>(first); place <= static_cast<int>(last); ++place) {
    menus_[static_cast<MenuPlace>(place)] = menu;
    ends_[static_cast<MenuPlace>(place)] = menu->addSeparator();
  }
  return menu;
}

QAction* WindowMenus::Add(MenuPlace place, const QString& text, const QKeySequence& key) {
  auto* action = new QAction(text, &bar_);
  action->setShortcut(key);
  menus_.at(place)->insertAction(ends_.at(place), action);
  actions_[place].append(action);
  return action;
}

QMenu* WindowMenus::AddMenu(MenuPlace place, const QString& text) {
  auto* menu = new QMenu(text, &bar_);
  menus_.at(place)->insertMenu(ends_.at(place), menu);
  return menu;
}

QList<QAction*> WindowMenus::ActionsOf(std::initializer_list<MenuPlace> places) const {
  QList<QAction*> found;
  for (const MenuPlace place : places) {
    const auto actions = actions_.find(place);
    if (actions == actions_.end()) continue;
    if (!found.isEmpty()) found.append(nullptr);
    found.append(actions->second);
  }
  return found;
}

QList<QAction*> WindowMenus::ActionsWithKeys() const {
  QList<QAction*> found;
  for (const QAction* top : bar_.actions()) {
    if (top->menu() == nullptr) continue;
    for (QAction* action : top->menu()->actions()) {
      if (!action->shortcut().isEmpty()) found.append(action);
    }
  }
  return found;
}

}  // namespace stockbook::app
