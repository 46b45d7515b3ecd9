// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/window/window_menus.h"

namespace stockbook::app {

// Shows the journal larger or smaller: by Ctrl and the wheel, by keys and by the menu.
class JournalZoom : public QObject {
  Q_OBJECT

 public:
  JournalZoom(qt::StockbookWidget& stockbook, WindowMenus& menus);

  void Set(double zoom);

 signals:
  void Changed(double zoom);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Step(int steps);

  qt::StockbookWidget& stockbook_;
  int turned_ = 0;  // by the wheel, short of a step
};

}  // namespace stockbook::app
