// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {

// Makes the cell the current one and scrolls to it, with the periods open that it lies in. Selecting a cell alone
// scrolls nowhere.
void BringIntoSight(sheet::GridSheet& sheet, int row, int column);

// Keeps the current row in sight when the journal becomes lower, by a panel below it, say. Belongs to the widget.
class RowInSight : public QObject {
  Q_OBJECT

 public:
  explicit RowInSight(qt::StockbookWidget& stockbook);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ScrollBack();

  qt::StockbookWidget& stockbook_;
  bool is_due_ = false;
};

}  // namespace stockbook::app
