// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <string>
#include <vector>

#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/sheet/contents/sheet_watcher.h"
#include "stockbook/window/column_arrangement.h"

namespace stockbook::app {

// The columns of the journal as the user arranges them, by the mouse, by the control's menus and by the host's own. It
// notices every change, so that the last ones can be undone, and keeps frozen columns from taking the whole view: they
// get at most two thirds of it, and the rest of them again as soon as there is room. What the program changes between
// Hold and Settle is no change by the user. Made for a widget that outlives it.
class JournalColumns : public QObject, private sheet::SheetWatcher {
  Q_OBJECT

 public:
  explicit JournalColumns(qt::StockbookWidget& stockbook);
  ~JournalColumns() override;

  // The present arrangement, with all columns that the user wants frozen.
  ColumnArrangement Now() const;
  // Each of these is one change that can be undone.
  void Arrange(const ColumnArrangement& wanted);
  void FreezeUpTo(int column);
  void Unfreeze();
  void Hide(int column);
  void FitToContents();
  // The control's layout, with nothing frozen.
  void LayOutAnew();

  bool CanUndo() const { return !undo_.empty(); }
  bool CanRedo() const { return !redo_.empty(); }
  void Undo();
  void Redo();

  // The view has another scale, so another number of columns fits.
  void ViewChanged() { look_.start(0); }

  // Until Settle, changes are the program's own.
  void Hold();
  // Restores how many columns the user wants frozen; less than 0 keeps it. Earlier changes can no longer be undone if
  // they are to be forgotten, or if the columns stand otherwise than before.
  enum class Earlier { kKept, kForgotten };
  void Settle(Earlier earlier, int frozen = -1);

 signals:
  // The arrangement may be another one: the user changed it or undid that, or the program has settled one.
  void Changed();
  // Something to tell the user.
  void Told(const QString& message);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // sheet::SheetWatcher
  void RowsInserted(std::span<const int64_t> /*rows*/, int /*count*/) override {}
  void RowsRemoved(int /*row*/, int /*count*/) override {}
  void RowsReplaced() override {}
  void FixedRowsChanged(int /*before*/) override {}
  void RowsChanged() override {}
  void ColumnsChanged() override;
  void CellsChanged(const platform::CellRange& /*range*/) override {}
  void LooksChanged() override {}
  void EverythingChanged() override {}
  void NodeChanged(int /*row*/) override {}
  void SheetGone() override { gone_ = true; }

  void Look();
  void LimitFrozen();
  int MostFrozen() const;
  void Restore(const ColumnArrangement& wanted);

  qt::StockbookWidget& stockbook_;
  QTimer look_;  // once the present event is over
  ColumnArrangement known_;
  std::vector<ColumnArrangement> undo_;
  std::vector<ColumnArrangement> redo_;
  int wanted_frozen_ = 0;
  int applied_frozen_ = 0;
  bool held_ = false;
  bool gone_ = false;
};

}  // namespace stockbook::app
