// SPDX-License-Identifier: MIT
#include "stockbook/window/selection_line.h"

#include <QEvent>

#include "qt/sheet/text.h"
#include "sheet/outline/row_states.h"
#include "stockbook/selection/selection_sums.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {
namespace {

constexpr int kSoonMs = 40;

int64_t ContentRevision(const sheet::Sheet& sheet) {
  return std::max({sheet.Revision(), sheet.TextRevision(), sheet.ColRevision()});
}

QString SummaryText(const SelectionSums& sums) {
  if (sums.count() == 0) return {};
  const auto shown = [](const std::string& number) { return qt::ToQString(number); };
  return SelectionLine::tr("计数 %L1　求和 %2　平均 %3　最小 %4　最大 %5")
      .arg(sums.count())
      .arg(shown(sums.SumText()), shown(sums.AverageText()), shown(sums.LeastText()), shown(sums.GreatestText()));
}

}  // namespace

SelectionLine::SelectionLine(qt::StockbookWidget& stockbook, QWidget* parent) : QLabel(parent), stockbook_(stockbook) {
  setTextFormat(Qt::PlainText);
  // A narrow window cuts it off; the tooltip tells all.
  setMinimumWidth(1);
  soon_.setSingleShot(true);
  soon_.setInterval(kSoonMs);
  connect(&soon_, &QTimer::timeout, this, &SelectionLine::Look);
  stockbook.viewport()->installEventFilter(this);
}

bool SelectionLine::IsOutdated() const {
  const sheet::GridSheet& sheet = stockbook_.sheet();
  return sheet.view().selection() != selection_ || ContentRevision(sheet) != revision_ ||
         sheet.states().TotalShown() != shown_rows_;
}

bool SelectionLine::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Paint && !soon_.isActive() && IsOutdated()) soon_.start();
  return QLabel::eventFilter(watched, event);
}

void SelectionLine::Look() {
  const sheet::GridSheet& sheet = stockbook_.sheet();
  // A load is on its way; it paints when it is done.
  if (!sheet.Redraw()) return;
  selection_ = sheet.view().selection();
  revision_ = ContentRevision(sheet);
  shown_rows_ = sheet.states().TotalShown();
  const QString text = selection_.IsRange() ? SummaryText(SelectionSums::Of(sheet, selection_)) : QString();
  setText(text);
  setToolTip(text.isEmpty() ? text : text + tr("\n只算选中的明细行，合计行不算在内。"));
}

}  // namespace stockbook::app
