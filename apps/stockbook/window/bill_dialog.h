// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QPushButton>
#include <QTableWidget>

#include "stockbook/window/bill_view.h"

namespace stockbook::app {

// Shows one bill with all its lines and totals, read-only. Enter on a line asks for the journal of its product; Esc
// closes the dialog.
class BillDialog : public QDialog {
  Q_OBJECT

 public:
  explicit BillDialog(BillView bill, QWidget* parent = nullptr);

  const BillView& bill() const { return bill_; }
  // The lines, and below them the totals.
  QTableWidget& lines() { return *lines_; }
  // The line of the current row; -1 on a total.
  int Line() const;
  void GoToLine(int line);

 signals:
  // The user wants the journal of the product of a line.
  void JournalWanted(int line);

 private:
  void FillLines();
  void FillRow(int row, const std::vector<QString>& texts);
  void FitColumns();
  void FitSize();
  QLayout* MakeFoot();
  void AskForJournal();
  void Print();

  BillView bill_;
  QTableWidget* lines_;
  QPushButton* journal_;
  int columns_width_ = 0;
};

}  // namespace stockbook::app
