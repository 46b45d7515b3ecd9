// SPDX-License-Identifier: MIT
#include "stockbook/window/margin_menu.h"

#include <QMenu>
#include <QMouseEvent>
#include <cmath>
#include <utility>

#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {

MarginMenu::MarginMenu(qt::StockbookWidget& stockbook, QList<QAction*> actions)
    : stockbook_(stockbook), actions_(std::move(actions)) {
  stockbook_.viewport()->installEventFilter(this);
}

bool MarginMenu::IsOnMargin(QPointF at) const {
  const QPointF pixel = at * stockbook_.viewport()->devicePixelRatioF();
  const sheet::GridSheet& sheet = stockbook_.sheet();
  const platform::CellPosition cell = sheet.view().geometry().CellAt(
      {static_cast<int>(std::floor(pixel.x())), static_cast<int>(std::floor(pixel.y()))});
  if (cell.row < 0 || cell.column < 0) return true;
  return cell.row < sheet.FixedRows() && cell.column < sheet.FixedCols();
}

bool MarginMenu::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::MouseButtonPress) return QObject::eventFilter(watched, event);
  const auto& press = static_cast<const QMouseEvent&>(*event);
  if (press.button() != Qt::RightButton || !IsOnMargin(press.position())) return QObject::eventFilter(watched, event);
  auto* menu = new QMenu(stockbook_.window());
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (QAction* action : actions_) {
    if (action == nullptr) {
      menu->addSeparator();
    } else {
      menu->addAction(action);
    }
  }
  menu->popup(press.globalPosition().toPoint());
  return true;
}

}  // namespace stockbook::app
