// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

#include "platform/menu.h"

namespace stockbook::qt {

// Pop-up menus at the mouse. PopUp waits for the choice in an event loop of its own, as menus do; should the widget go
// away meanwhile, nothing was chosen.
class QtMenu : public platform::Menu {
 public:
  explicit QtMenu(QWidget* parent) : parent_(parent) {}
  platform::MenuChoice PopUp(const platform::MenuItem& menu) override;
  bool IsOpen() const { return open_ > 0; }

 private:
  QPointer<QWidget> parent_;
  int open_ = 0;
};

}  // namespace stockbook::qt
