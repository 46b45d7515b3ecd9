// SPDX-License-Identifier: MIT
#pragma once

#include <QAction>
#include <QObject>
#include <QPointer>

#include "stockbook/window/column_dialog.h"
#include "stockbook/window/journal_columns.h"
#include "stockbook/window/window_menus.h"

namespace stockbook::app {

// The items of the menus for the columns and periods of the journal: all that the control's own menus have, and a way
// back from each.
class ColumnActions : public QObject {
  Q_OBJECT

 public:
  ColumnActions(qt::StockbookWidget& stockbook, JournalColumns& columns, WindowMenus& menus);

  // Opens the list of the columns, or brings it to the front.
  void OpenDialog();
  ColumnDialog* dialog() { return dialog_; }

 private:
  void AddColumnItems(WindowMenus& menus);
  void AddPeriodItems(WindowMenus& menus);
  void Follow();

  qt::StockbookWidget& stockbook_;
  JournalColumns& columns_;
  QAction* undo_ = nullptr;
  QAction* redo_ = nullptr;
  QAction* unfreeze_ = nullptr;
  QPointer<ColumnDialog> dialog_;
};

}  // namespace stockbook::app
