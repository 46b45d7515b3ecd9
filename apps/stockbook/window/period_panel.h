// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>
#include <QLabel>
#include <QTableView>

#include "stockbook/window/period_table.h"

namespace stockbook::app {

// The panel with one line a period: what there was, what came and went, what there is then, and the average price. A
// click on a line, or Enter, goes to the period in the journal; Esc returns there without. Below it stands what the two
// numbers of a total row mean. What is in it is built when it is first shown or asked for: the start of the program
// does not wait for it.
class PeriodPanel : public QDockWidget {
  Q_OBJECT

 public:
  explicit PeriodPanel(QWidget* parent = nullptr);

  PeriodTable& table() { return *table_; }
  QTableView& view();
  // Puts the cursor on the period of a record, if it is shown.
  void Mark(size_t record);

  void setVisible(bool visible) override;

 signals:
  // A line was chosen; the first of its records that is shown.
  void PeriodChosen(size_t record);
  void Left();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Build();
  void Choose(const QModelIndex& index);

  PeriodTable* table_;
  QTableView* view_ = nullptr;
  QLabel* note_ = nullptr;
};

}  // namespace stockbook::app
