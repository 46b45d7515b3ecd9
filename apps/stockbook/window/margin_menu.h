// SPDX-License-Identifier: MIT
#pragma once

#include <QAction>
#include <QList>
#include <QObject>

#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::app {

// The menu of the right button where the grid has no cell that the click could mean: beyond the last column, below the
// last row and in the corner of the captions. The control's own menu there would be that of the current cell.
class MarginMenu : public QObject {
  Q_OBJECT

 public:
  // Shows the actions, which belong to somebody else; a null one is a separator.
  MarginMenu(qt::StockbookWidget& stockbook, QList<QAction*> actions);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool IsOnMargin(QPointF at) const;

  qt::StockbookWidget& stockbook_;
  QList<QAction*> actions_;
};

}  // namespace stockbook::app
