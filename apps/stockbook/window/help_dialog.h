// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QTreeWidget>

#include "stockbook/window/window_menus.h"

namespace stockbook::app {

// The keys of the window and of the journal, what the signs in it mean, and the version of the program. The keys of the
// menus are those that the menus have.
class HelpDialog : public QDialog {
  Q_OBJECT

 public:
  explicit HelpDialog(const WindowMenus& menus, QWidget* parent = nullptr);

  const QTreeWidget& keys() const { return *keys_; }

 private:
  void FillKeys(const WindowMenus& menus);

  QTreeWidget* keys_;
};

}  // namespace stockbook::app
