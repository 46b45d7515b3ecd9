// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>

namespace stockbook::qt {

// A menu whose checkable items leave it open when they are ticked, by the mouse, Space or Enter; its submenus are meant
// to be of the same kind. All other items choose and close, as in any menu.
class TickedMenu : public QMenu {
 public:
  using QMenu::QMenu;
  // Sets the check mark and tells it to those who cannot see it, which an action alone does not.
  static void ShowTick(QAction& item, bool checked);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
};

}  // namespace stockbook::qt
