// SPDX-License-Identifier: MIT
#include "qt/menu.h"

#include <QAction>
#include <QCursor>
#include <QMenu>
#include <QObject>
#include <deque>
#include <vector>

#include "base/text.h"
#include "qt/sheet/text.h"
#include "qt/ticked_menu.h"

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
template <typename Submenu>
void Fill(QMenu& menu, const std::vector<platform::MenuItem>& items, const Hints& hints,
          std::vector<platform::MenuChoice>& choices) {
  for (const platform::MenuItem& item : items) {
    if (!item.visible) continue;
    QAction* action = nullptr;
    if (item.separator) {
      action = menu.addSeparator();
    } else if (!item.items.empty()) {
      auto* submenu = new Submenu(CaptionOf(item), &menu);
      Fill<Submenu>(*submenu, item.items, hints, choices);
      action = menu.addMenu(submenu);
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

// The items that were ticked and not yet told. The menu may end with any of them.
class Ticks : public QObject {
 public:
  Ticks(const std::vector<platform::MenuChoice>& choices, const platform::MenuTick& tick)
      : choices_(choices), tick_(tick) {}

  void Hear(QMenu& menu) {
    for (QAction* item : menu.actions()) {
      if (item->menu() != nullptr) Hear(*item->menu());
      if (item->isCheckable()) connect(item, &QAction::triggered, this, [this, item] { Add(item); });
    }
  }
  void TellAll() {
    while (!waiting_.empty()) {
      const QPointer<QAction> item = waiting_.front();
      waiting_.pop_front();
      if (item == nullptr) continue;
      const bool checked = tick_(choices_[item->data().toULongLong()]);
      if (item != nullptr) TickedMenu::ShowTick(*item, checked);
    }
  }

 private:
  // Not within the menu's own event, which whoever hears of the tick may delete the menu in.
  void Add(QAction* item) {
    waiting_.emplace_back(item);
    QMetaObject::invokeMethod(
        this, [this] { TellAll(); }, Qt::QueuedConnection);
  }

  const std::vector<platform::MenuChoice>& choices_;
  const platform::MenuTick& tick_;
  std::deque<QPointer<QAction>> waiting_;
};

platform::MenuChoice ChoiceOf(const QAction& item, const std::vector<platform::MenuChoice>& choices) {
  return item.data().isValid() ? choices[item.data().toULongLong()] : platform::MenuChoice();
}

}  // namespace

// Menus are on the heap, because a parent deleted while one is open deletes the menu too.
platform::MenuChoice QtMenu::PopUp(const platform::MenuItem& menu) {
  const QPointer<QMenu> popup = new QMenu(parent_);
  std::vector<platform::MenuChoice> choices;
  Fill<QMenu>(*popup, menu.items, hints_, choices);
  const QAction* chosen = popup->exec(Place());
  platform::MenuChoice choice;
  if (popup != nullptr && chosen != nullptr) choice = ChoiceOf(*chosen, choices);
  delete popup;
  return choice;
}

platform::MenuChoice QtMenu::PopUpToTick(const platform::MenuItem& menu, const platform::MenuTick& tick) {
  const QPointer<QMenu> popup = new TickedMenu(parent_);
  std::vector<platform::MenuChoice> choices;
  Fill<TickedMenu>(*popup, menu.items, hints_, choices);
  Ticks ticks(choices, tick);
  ticks.Hear(*popup);
  const QPointer<QAction> chosen = popup->exec(Place());
  ticks.TellAll();
  platform::MenuChoice choice;
  // A checkable item that closed the menu, by its letter, has been told like the others.
  if (popup != nullptr && chosen != nullptr && !chosen->isCheckable()) choice = ChoiceOf(*chosen, choices);
  delete popup;
  return choice;
}

QPoint QtMenu::Place() const { return place_ ? place_() : QCursor::pos(); }

}  // namespace stockbook::qt
