// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <utility>

#include "platform/menu.h"

namespace stockbook::qt {

// Pop-up menus at the mouse, or where a view says. PopUp waits for the choice in an event loop of its own, as menus do;
// should the widget go away meanwhile, nothing was chosen.
class QtMenu : public platform::Menu {
 public:
  explicit QtMenu(QWidget* parent) : parent_(parent) {}
  platform::MenuChoice PopUp(const platform::MenuItem& menu) override;
  // Of the menus to come, on the screen.
  void SetPlace(std::function<QPoint()> place) { place_ = std::move(place); }
  bool IsOpen() const { return open_ > 0; }

 private:
  QPointer<QWidget> parent_;
  std::function<QPoint()> place_;
  int open_ = 0;
};

}  // namespace stockbook::qt
