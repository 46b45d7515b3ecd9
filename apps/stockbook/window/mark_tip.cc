// SPDX-License-Identifier: MIT
#include "stockbook/window/mark_tip.h"

#include <QHelpEvent>
#include <QToolTip>

#include "qt/sheet/tool_tip.h"
#include "stockbook/window/host_translator.h"

namespace stockbook::app {
namespace {

constexpr int kMarkReach = 24;  // pixels from the end of the band: the mark itself is too small to be pointed at

}  // namespace

MarkTip::MarkTip(qt::StockbookWidget& stockbook) : QObject(&stockbook), stockbook_(stockbook) {
  stockbook_.installEventFilter(this);
}

// The band has a tooltip of its own only where its caption is cut off; otherwise the journal is asked.
bool MarkTip::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QObject::eventFilter(watched, event);
  const auto& help = static_cast<const QHelpEvent&>(*event);
  const QRect cells(stockbook_.viewport()->mapTo(&stockbook_, QPoint(0, 0)), stockbook_.viewport()->size());
  const bool mirrored = stockbook_.layoutDirection() == Qt::RightToLeft;
  const int from_end = mirrored ? help.x() : stockbook_.width() - help.x();
  if (help.y() >= cells.top() || from_end > kMarkReach) return QObject::eventFilter(watched, event);
  QToolTip::showText(help.globalPos(), qt::PlainToolTip(HostText("数量右上角有这样圆点的行，记录了库存来源。")),
                     &stockbook_);
  return true;
}

}  // namespace stockbook::app
