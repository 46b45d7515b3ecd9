// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>
#include <map>
#include <string>
#include <utility>

#include "stockbook/platform/menu.h"

namespace stockbook::qt {

// Pop-up menus at the mouse, or where a view says. PopUp waits for the choice in its own event loop, as menus do; if
// the widget is deleted meanwhile, nothing was chosen.
class QtMenu : public platform::Menu {
 public:
  explicit QtMenu(QWidget* parent) : parent_(parent) {}
  platform::MenuChoice PopUp(const platform::MenuItem& menu) override;
  // The mouse, Space and Enter tick the checkable items. `tick` is called from the event loop, in the order of the
  // ticks and for all of them before this returns; if the widget is deleted meanwhile, for no more of them.
  platform::MenuChoice PopUpToTick(const platform::MenuItem& menu, const platform::MenuTick& tick) override;
  // Texts beside the items, in the column of the keys, by the names of the items or, where several have one name, by
  // name and index: "mnuCollapse1".
  void SetHints(std::map<std::string, QString> hints) { hints_ = std::move(hints); }
  // The position of the following menus, in screen coordinates.
  void SetPlace(std::function<QPoint()> place) { place_ = std::move(place); }

 private:
  QPoint Place() const;

  QPointer<QWidget> parent_;
  std::function<QPoint()> place_;
  std::map<std::string, QString> hints_;
};

}  // namespace stockbook::qt
