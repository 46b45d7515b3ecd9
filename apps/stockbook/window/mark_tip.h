// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::app {

// Tells what the mark at the right end of the band above the journal stands for, in a tooltip. The control draws the
// same mark beside quantities.
class MarkTip : public QObject {
  Q_OBJECT

 public:
  // Belongs to the journal.
  explicit MarkTip(qt::StockbookWidget& stockbook);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  qt::StockbookWidget& stockbook_;
};

}  // namespace stockbook::app
