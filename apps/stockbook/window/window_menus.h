// SPDX-License-Identifier: MIT
#pragma once

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QObject>
#include <QString>
#include <functional>
#include <initializer_list>
#include <map>
#include <type_traits>
#include <utility>

namespace stockbook::app {

// The places of the menu bar where features put their actions, in the order of the bar; separators stand between the
// places of one menu.
enum class MenuPlace {
  kFileOpen,    // opening, recent inventories, import
  kFileOutput,  // printing, export
  kFileEnd,
  kEditCopy,
  kEditFind,
  kEditUndo,
  kViewJournal,  // reloading, range, statistics
  kViewColumns,
  kViewPeriods,
  kViewPanels,  // what opens beside the journal: summaries, plots
  kViewZoom,
  kViewMemory,  // what the window remembers
  kGoBack,      // back and forward through the journals
  kGoRow,       // from the current row to somewhere else
  kHelp,
};

// Close the window, also while it reads.
inline QKeySequence CloseKeys() { return {Qt::CTRL | Qt::Key_Q}; }

// The menus of a window: file, edit, view, go, help. Whoever has a feature adds its actions here; the menus know none
// of them. The actions belong to the menu bar.
class WindowMenus : public QObject {
  Q_OBJECT

 public:
  explicit WindowMenus(QMenuBar& bar);

  // While it is true, commands are refused, whoever sends them: what they would work on is half done. The window can
  // be closed all the same.
  void SetBusy(std::function<bool()> busy) { busy_ = std::move(busy); }
  // Adds an action at the end of the place, and returns it.
  QAction* Add(MenuPlace place, const QString& text, const QKeySequence& key = {});
  template <typename Receiver, typename Slot>
  QAction* Add(MenuPlace place, const QString& text, const QKeySequence& key, Receiver* receiver, Slot slot) {
    QAction* action = Add(place, text, key);
    connect(action, &QAction::triggered, receiver, [this, place, receiver, slot] {
      if (IsRefused(place)) return;
      if constexpr (std::is_member_function_pointer_v<Slot>) {
        (receiver->*slot)();
      } else {
        static_cast<void>(receiver);  // which a function of no class does not need
        slot();
      }
    });
    return action;
  }
  // A menu of its own at the end of the place.
  QMenu* AddMenu(MenuPlace place, const QString& text);
  // The actions of the places so far, with a null one between two places.
  QList<QAction*> ActionsOf(std::initializer_list<MenuPlace> places) const;
  // All actions with a key, in the order of the menus, for a list of the keys.
  QList<QAction*> ActionsWithKeys() const;

 private:
  bool IsRefused(MenuPlace place) const { return place != MenuPlace::kFileEnd && busy_ && busy_(); }
  QMenu* AddTopMenu(const QString& text, MenuPlace first, MenuPlace last);

  QMenuBar& bar_;
  std::function<bool()> busy_;
  std::map<MenuPlace, QMenu*> menus_;
  std::map<MenuPlace, QList<QAction*>> actions_;
  std::map<MenuPlace, QAction*> ends_;  // the separator that ends a place
};

}  // namespace stockbook::app
