// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QTableWidget>

#include "stockbook/window/bill_view.h"

namespace stockbook::app {

// Shows one bill, read-only; Esc and Enter close it.
class BillDialog : public QDialog {
  Q_OBJECT

 public:
  explicit BillDialog(const BillView& bill, QWidget* parent = nullptr);

  const QTableWidget& lines() const { return *lines_; }

 private:
  void FillLines(const BillView& bill);
  void FitSize();

  QTableWidget* lines_;
  int columns_width_ = 0;
};

}  // namespace stockbook::app
