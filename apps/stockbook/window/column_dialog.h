// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <string>
#include <vector>

#include "stockbook/window/journal_columns.h"

namespace stockbook::app {

// The columns of the journal in a list that stays open beside it: which are shown, in what order, how wide, how many
// of them frozen. Every change applies at once and can be undone. Rows are moved by dragging or by keys.
class ColumnDialog : public QDialog {
  Q_OBJECT

 public:
  ColumnDialog(qt::StockbookWidget& stockbook, JournalColumns& columns, QWidget* parent = nullptr);

  // The list: a column in each row, its caption with a box, its width in pixels, and whether it is frozen.
  QTreeWidget& list() { return *list_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildButtons(QVBoxLayout& rows);
  void Refill();
  void TakeItem(QTreeWidgetItem* item, int part);
  void TakeOrder();
  void MoveCurrent(int by);
  void FreezeUpToCurrent();
  std::string CurrentKey() const;
  void MakeCurrent(const std::string& key);

  qt::StockbookWidget& stockbook_;
  JournalColumns& columns_;
  QTreeWidget* list_;
};

}  // namespace stockbook::app
