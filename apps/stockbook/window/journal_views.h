// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>
#include <QMenu>
#include <QObject>
#include <cstdint>
#include <functional>
#include <utility>

#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/range/range_view.h"
#include "stockbook/window/panel_height.h"
#include "stockbook/window/period_panel.h"
#include "stockbook/window/plot_panel.h"
#include "stockbook/window/range_bar.h"
#include "stockbook/window/total_notes.h"

namespace stockbook::app {

// What the window shows of a loaded journal beside the journal itself: the range, the summary of its periods and its
// plot. A click in one of them goes to the line in the journal; a line that anything else goes to is never hidden by
// the range. Nothing of it is computed while it cannot be seen.
class JournalViews : public QObject {
  Q_OBJECT

 public:
  // Adds its panels, closed, to the window, which owns them.
  JournalViews(QMainWindow& window, qt::StockbookWidget& stockbook);

  RangeBar& range_bar() { return *bar_; }
  PeriodPanel& periods() { return *periods_; }
  PlotPanel& plot() { return *plot_; }
  PanelHeight& panel_height() { return *height_; }
  const JournalRange& range() const { return range_view_.range(); }
  const RangeView& range_view() const { return range_view_; }

  // While it is true the journal is being replaced: nothing follows it, and no range is shown.
  void SetBusy(std::function<bool()> busy) { busy_ = std::move(busy); }
  // The commands with their keys.
  void AddActions(QMenu& menu);
  // To be called when a load is over, before AfterLoad: one that failed has replaced nothing.
  void LoadEnded(bool loaded) { is_fresh_ = is_fresh_ && loaded; }
  // To be called after every attempt to load: shows the range of the journal that is there now, unless it is still the
  // one from before.
  void AfterLoad(JournalRange range);
  // To be called after columns were hidden or shown, for what stands beside the totals.
  void ColumnsChanged() { NoteTotals(stockbook_.Grid()); }
  void ShowRange(JournalRange range);
  // "共 5,000 行", or "显示 400 行，共 5,000 行".
  QString RowCount() const;
  // Opens the period of the record and makes its row current.
  void GoTo(size_t record);

 signals:
  // A message for the user.
  void Told(const QString& message);
  void RangeChanged();

 private:
  bool IsBusy() const { return busy_ && busy_(); }
  void BuildRangeMenu(QMenu& menu);
  void AddPanelAction(QMenu& menu, QDockWidget& panel, const QString& text, const QKeySequence& key);
  void ConnectPanels();
  void Refresh();
  void RefreshPeriods();
  void RefreshPlot();
  void MarkLine();
  void FollowRow();
  void MoveInPlot(PlotView::Move move);
  // The record of the current row, -1 for other rows.
  int64_t CurrentRecord() const;
  void GoToPoint(double day, const std::optional<double>& quantity);
  void ReturnToJournal() { stockbook_.setFocus(); }

  QMainWindow& window_;
  qt::StockbookWidget& stockbook_;
  std::function<bool()> busy_;
  RangeView range_view_;
  bool is_fresh_ = false;  // a load has replaced the journal since
  bool is_empty_ = false;  // the user was told that the range has no bills
  RangeBar* bar_;
  PeriodPanel* periods_;
  PlotPanel* plot_;
  PanelHeight* height_;
};

}  // namespace stockbook::app
