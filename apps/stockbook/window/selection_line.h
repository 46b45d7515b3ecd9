// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QTimer>
#include <cstdint>

#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/sheet/selection/selection.h"

namespace stockbook::app {

// Count, sum, average, least and greatest of the selected numbers, in the status line; nothing where a single cell or
// no number is selected. It looks again shortly after the journal was painted with another selection, so that selecting
// stays quick.
class SelectionLine : public QLabel {
  Q_OBJECT

 public:
  explicit SelectionLine(qt::StockbookWidget& stockbook, QWidget* parent = nullptr);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool IsOutdated() const;
  void Look();

  qt::StockbookWidget& stockbook_;
  sheet::Selection selection_;
  int64_t revision_ = -1;
  int64_t shown_rows_ = 0;
  QTimer soon_;
};

}  // namespace stockbook::app
