// SPDX-License-Identifier: MIT
#include "stockbook/window/journal_views.h"

#include <QAction>
#include <utility>

#include "qt/sheet/text.h"
#include "stockbook/plot/plot_series.h"
#include "stockbook/range/period_summary.h"
#include "stockbook/window/host_translator.h"
#include "stockbook/window/mark_tip.h"
#include "stockbook/window/range_words.h"
#include "stockbook/window/row_sight.h"

namespace stockbook::app {
namespace {

constexpr int kLeastJournal = 108;  // its band, its captions and a line

std::optional<PeriodKey> NewestPeriodOf(const RangeView& view) {
  std::optional<PeriodKey> newest;
  for (const PeriodRun& period : view.periods()) {
    const auto key = PeriodKey::Of(period.period);
    if (key && (!newest || *newest < *key)) newest = key;
  }
  return newest;
}

}  // namespace

JournalViews::JournalViews(QMainWindow& window, qt::StockbookWidget& stockbook)
    : QObject(&window),
      window_(window),
      stockbook_(stockbook),
      range_view_(stockbook.control()),
      bar_(new RangeBar(&window)),
      periods_(new PeriodPanel(&window)),
      plot_(new PlotPanel(&window)),
      height_(new PanelHeight(window, {periods_, plot_})) {
  window_.addDockWidget(Qt::BottomDockWidgetArea, periods_);
  window_.addDockWidget(Qt::BottomDockWidgetArea, plot_);
  periods_->hide();
  plot_->hide();
  new MarkTip(stockbook_);
  new RowInSight(stockbook_);
  stockbook_.setMinimumHeight(kLeastJournal);
  connect(&stockbook_, &qt::StockbookWidget::AfterLoaded, this, [this] { is_fresh_ = true; });
  connect(bar_, &RangeBar::RangeWanted, this, [this](const JournalRange& range) {
    if (!IsBusy()) ShowRange(range);
  });
  connect(bar_, &RangeBar::Failed, this, &JournalViews::Told);
  connect(bar_, &RangeBar::Closed, this, &JournalViews::ReturnToJournal);
  ConnectPanels();
}

void JournalViews::ConnectPanels() {
  connect(periods_, &QDockWidget::visibilityChanged, this, [this](bool visible) {
    if (visible) RefreshPeriods();
  });
  connect(periods_, &PeriodPanel::PeriodChosen, this, &JournalViews::GoTo);
  connect(periods_, &PeriodPanel::Left, this, &JournalViews::ReturnToJournal);
  connect(plot_, &QDockWidget::visibilityChanged, this, [this](bool visible) {
    if (visible) RefreshPlot();
  });
  connect(plot_, &PlotPanel::Told, this, &JournalViews::Told);
  connect(plot_, &PlotPanel::PointChosen, this, &JournalViews::GoToPoint);
  connect(plot_, &PlotPanel::MoveWanted, this, &JournalViews::MoveInPlot);
  connect(plot_, &PlotPanel::Left, this, &JournalViews::ReturnToJournal);
  // The control is in the middle of an event then.
  connect(&stockbook_, &qt::StockbookWidget::AfterRowChanged, this, &JournalViews::FollowRow, Qt::QueuedConnection);
}

void JournalViews::AddActions(QMenu& menu) {
  BuildRangeMenu(menu);
  AddPanelAction(menu, *periods_, HostText("期间汇总(&M)"), QKeySequence(Qt::CTRL | Qt::Key_M));
  AddPanelAction(menu, *plot_, HostText("走势图(&G)"), QKeySequence(Qt::CTRL | Qt::Key_G));
}

void JournalViews::BuildRangeMenu(QMenu& menu) {
  QMenu* ranges = menu.addMenu(HostText("区间(&A)"));
  QAction* choose = ranges->addAction(HostText("选择区间(&R)..."), bar_, &RangeBar::Open);
  choose->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_R));
  ranges->addSeparator();
  for (const RangePreset preset : kRangePresets)
    ranges->addAction(PresetWords(preset), bar_, [this, preset] { bar_->Choose(preset); });
  ranges->addSeparator();
  QAction* previous = ranges->addAction(HostText("前一区间(&P)"), bar_, [this] { bar_->Step(-1); });
  previous->setShortcut(QKeySequence(Qt::ALT | Qt::Key_PageUp));
  QAction* next = ranges->addAction(HostText("后一区间(&N)"), bar_, [this] { bar_->Step(1); });
  next->setShortcut(QKeySequence(Qt::ALT | Qt::Key_PageDown));
}

// By the key the panel opens and gets the focus; by the key again, while it has the focus, it closes.
void JournalViews::AddPanelAction(QMenu& menu, QDockWidget& panel, const QString& text, const QKeySequence& key) {
  QAction* action = menu.addAction(text);
  action->setShortcut(key);
  action->setCheckable(true);
  QDockWidget* shown = &panel;
  connect(shown, &QDockWidget::visibilityChanged, action, [action, shown] { action->setChecked(!shown->isHidden()); });
  connect(action, &QAction::triggered, this, [this, action, shown] {
    QWidget* inside = shown == periods_ ? static_cast<QWidget*>(&periods_->view()) : &plot_->view();
    if (inside->hasFocus()) {
      shown->hide();
      ReturnToJournal();
    } else {
      shown->show();
      shown->raise();
      inside->setFocus(Qt::ShortcutFocusReason);
    }
    action->setChecked(!shown->isHidden());
  });
}

void JournalViews::AfterLoad(JournalRange range) {
  // Panels that were opened meanwhile are still empty.
  if (!std::exchange(is_fresh_, false) && !range_view_.IsStale()) return Refresh();
  NoteTotals(stockbook_.Grid());
  range_view_.JournalLoaded();
  is_empty_ = false;
  ShowRange(std::move(range));
}

void JournalViews::ShowRange(JournalRange range) {
  range_view_.Show(range);
  bar_->SetRange(range, NewestPeriodOf(range_view_));
  const bool was_empty = std::exchange(is_empty_, !range.IsAll() && range_view_.ShownCount() == 0);
  if (is_empty_) {
    emit Told(HostText("%1没有单据。").arg(RangeWords(range)));
  } else if (was_empty) {
    emit Told(RowCount());  // what was told is no longer so
  }
  Refresh();
  emit RangeChanged();
}

QString JournalViews::RowCount() const {
  const size_t records = stockbook_.Grid().RecordCount();
  if (range().IsAll()) return HostText("共 %L1 行").arg(records);
  return HostText("显示 %L1 行，共 %L2 行").arg(range_view_.ShownCount()).arg(records);
}

void JournalViews::Refresh() {
  RefreshPeriods();
  RefreshPlot();
}

void JournalViews::RefreshPeriods() {
  if (periods_->isHidden() || IsBusy()) return;
  platform::Grid& grid = stockbook_.Grid();
  periods_->table().SetLines(SummarizePeriods(grid, range_view_), stockbook_.control().JournalType(), grid);
  MarkLine();
}

void JournalViews::RefreshPlot() {
  if (plot_->isHidden() || IsBusy()) return;
  JournalPlot plot = PlotOf(stockbook_.Grid(), range_view_, stockbook_.control().Caption());
  plot.movements_caption = qt::FromQString(HostText("收入（上）与发出（下）"));
  plot_->view().SetPlot(std::move(plot));
  MarkLine();
}

int64_t JournalViews::CurrentRecord() const {
  const platform::Grid& grid = stockbook_.Grid();
  const int row = grid.Row();
  return row < grid.FixedRows() || row >= grid.Rows() ? -1 : grid.RecordOfRow(row);
}

void JournalViews::MarkLine() {
  const int64_t current = CurrentRecord();
  const auto record = static_cast<size_t>(current);
  if (!periods_->isHidden() && current >= 0) periods_->Mark(record);
  if (!plot_->isHidden())
    plot_->view().SetMark(current < 0 ? std::nullopt : std::optional(PlotStepOf(stockbook_.Grid(), record)));
}

// Whatever led to a line outside the range, a hit or a link: the line is what the user wants to see.
void JournalViews::FollowRow() {
  if (IsBusy()) return;
  const int64_t current = CurrentRecord();
  if (current >= 0 && !range().IsAll() && !range_view_.Shows(static_cast<size_t>(current))) {
    const QString left = RangeWords(range());
    ShowRange({});
    stockbook_.control().SetRow(stockbook_.Grid().Row());
    emit Told(HostText("这一行不在区间（%1）内，现在显示全部。").arg(left));
  }
  MarkLine();
}

void JournalViews::GoTo(size_t record) {
  sheet::GridSheet& sheet = stockbook_.sheet();
  const int row = sheet.RowOfRecord(record);
  if (row >= 0) BringIntoSight(sheet, row, std::max(sheet.Col(), sheet.FixedCols()));
}

void JournalViews::GoToPoint(double day, const std::optional<double>& quantity) {
  if (const auto record = RecordAt(stockbook_.Grid(), range_view_, day, quantity)) GoTo(*record);
}

void JournalViews::MoveInPlot(PlotView::Move move) {
  const std::vector<RecordRun>& shown = range_view_.shown();
  if (shown.empty()) return;
  const size_t first = shown.front().begin;
  const size_t last = shown.back().end - 1;
  const int64_t current = CurrentRecord();
  if (move == PlotView::Move::kFirst || current < 0) {
    GoTo(first);
  } else if (move == PlotView::Move::kLast) {
    GoTo(last);
  } else {
    auto record = static_cast<size_t>(current);
    const bool next = move == PlotView::Move::kNext;
    do {
      if (record == (next ? last : first)) return;
      record = next ? record + 1 : record - 1;
    } while (!range_view_.Shows(record));
    GoTo(record);
  }
}

}  // namespace stockbook::app
