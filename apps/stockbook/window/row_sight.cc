// SPDX-License-Identifier: MIT
#include "stockbook/window/row_sight.h"

#include <QEvent>
#include <QResizeEvent>
#include <utility>
#include <vector>

namespace stockbook::app {
namespace {

// The nodes above the row are the last ones before it on each higher level.
void OpenPeriodsOf(sheet::GridSheet& sheet, int row) {
  std::vector<int> over;
  for (int node = sheet.NextSubtotal(sheet.FixedRows()); node >= 0 && node < row; node = sheet.NextSubtotal(node + 1)) {
    while (!over.empty() && sheet.RowOutlineLevel(over.back()) >= sheet.RowOutlineLevel(node)) over.pop_back();
    over.push_back(node);
  }
  for (const int node : over) {
    if (sheet.RowOutlineLevel(node) < sheet.RowOutlineLevel(row) && sheet.IsCollapsed(node))
      sheet.SetIsCollapsed(node, false);
  }
}

}  // namespace

void BringIntoSight(sheet::GridSheet& sheet, int row, int column) {
  OpenPeriodsOf(sheet, row);
  sheet.Select(row, column);
  // Whoever hears of the new cell may have changed the rows.
  if (row >= sheet.Rows() || column >= sheet.Cols()) return;
  sheet.view().ScrollTo(sheet.view().geometry().ToShow(row, column));
}

RowInSight::RowInSight(qt::StockbookWidget& stockbook) : QObject(&stockbook), stockbook_(stockbook) {
  stockbook_.viewport()->installEventFilter(this);
}

// The sheet itself hears of its new size after this.
bool RowInSight::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() != QEvent::Resize || is_due_) return false;
  const auto* resize = static_cast<const QResizeEvent*>(event);
  sheet::GridSheet& sheet = stockbook_.sheet();
  const int row = sheet.Row();
  const bool is_lower = resize->size().height() < resize->oldSize().height();
  if (!is_lower || row < sheet.FixedRows() || row >= sheet.Rows() || !sheet.view().geometry().RowIsVisible(row))
    return false;
  is_due_ = true;
  QMetaObject::invokeMethod(this, &RowInSight::ScrollBack, Qt::QueuedConnection);
  return false;
}

// Downwards only: the columns stay where they are.
void RowInSight::ScrollBack() {
  is_due_ = false;
  sheet::GridSheet& sheet = stockbook_.sheet();
  const int row = sheet.Row();
  const int column = sheet.Col();
  if (row < sheet.FixedRows() || row >= sheet.Rows() || column < 0 || column >= sheet.Cols()) return;
  const auto& geometry = sheet.view().geometry();
  auto place = geometry.scroll();
  place.y = geometry.ToShow(row, column).y;
  sheet.view().ScrollTo(place);
}

}  // namespace stockbook::app
