// SPDX-License-Identifier: MIT
#include "stockbook/window/shown_journal.h"

#include <QApplication>
#include <utility>

#include "sheet/grid_sheet.h"
#include "stockbook/window/host_layout.h"
#include "stockbook/window/reading_place.h"

namespace stockbook::app {

bool IsSameJournal(const JournalOptions& left, const JournalOptions& right) {
  return left.journal_type == right.journal_type && left.key_id == right.key_id && left.dp_id == right.dp_id &&
         left.dp_code == right.dp_code;
}

ShownJournal::ShownJournal(qt::StockbookWidget& stockbook, JournalColumns& columns)
    : stockbook_(stockbook), columns_(columns) {
  loader_ = [this](const JournalOptions& options) {
    return app::LoadJournal(stockbook_.control(), connection_, options);
  };
  connect(&stockbook, &qt::StockbookWidget::AfterFormatted, this, &ShownJournal::TakeLayout);
}

void ShownJournal::SetConnection(std::shared_ptr<platform::Connection> connection) {
  connection_ = std::move(connection);
  shown_.reset();
  ShowNone();
}

// Lines of an inventory that is closed would be taken for those of the one that is open.
void ShownJournal::ShowNone() {
  platform::Grid& grid = stockbook_.Grid();
  grid.SetRows(grid.FixedRows());
  stockbook_.control().SetCaption({});
}

// A layout outside a load is the default layout that the user asked for.
void ShownJournal::TakeLayout() {
  RefineLayout(stockbook_.control());
  if (loading_) {
    laid_out_ = true;
  } else {
    memories_[stockbook_.control().JournalType()].StartFrom(stockbook_.Grid());
    LowerCaptions(stockbook_.control());
  }
}

void ShownJournal::LearnColumns() {
  memories_[stockbook_.control().JournalType()].Learn(stockbook_.Grid(), columns_.Now().frozen);
}

ColumnChanges ShownJournal::ChangesOf(int journal_type) {
  if (journal_type == stockbook_.control().JournalType()) LearnColumns();
  return memories_[journal_type].changes();
}

void ShownJournal::SetChanges(int journal_type, ColumnChanges changes) {
  memories_[journal_type].SetChanges(std::move(changes));
}

void ShownJournal::PutColumnsBack(int type_before) {
  const int type = stockbook_.control().JournalType();
  ColumnMemory& memory = memories_[type];
  if (laid_out_) {
    platform::Grid& grid = stockbook_.Grid();
    memory.PutBack(grid, stockbook_.control().ColsFilter());
    // The tree stays where it was when columns move.
    grid.SetOutlineCol(grid.ColIndex(stockbook_.control().OutlineColKey()));
  }
  columns_.Settle(type == type_before ? JournalColumns::Earlier::kKept : JournalColumns::Earlier::kForgotten,
                  memory.changes().frozen);
}

LoadReport ShownJournal::Load(const JournalOptions& options) {
  if (connection_ == nullptr || loading_) return {};
  control::Stockbook& control = stockbook_.control();
  const ReadingPlace place(stockbook_.sheet());
  const bool same = shown_.has_value() && IsSameJournal(*shown_, options);
  emit Leaving();
  if (shown_.has_value()) LearnColumns();
  columns_.Hold();
  control::KeptJournal kept = control.Keep();
  sheet::GridSheet::Kept kept_grid = stockbook_.sheet().Keep();
  const int type_before = control.JournalType();
  laid_out_ = false;
  loading_ = true;
  QApplication::setOverrideCursor(Qt::WaitCursor);
  LoadReport report = loader_(options);
  QApplication::restoreOverrideCursor();
  loading_ = false;
  if (report.loaded) {
    ShowLoaded(options, type_before);
    if (!same || !place.GoBack(stockbook_.sheet())) GoToFirstCell();
  } else {
    control.PutBack(std::move(kept));
    stockbook_.sheet().PutBack(std::move(kept_grid));
    columns_.Settle(JournalColumns::Earlier::kKept);
  }
  emit Arrived(report.loaded);
  return report;
}

void ShownJournal::ShowLoaded(const JournalOptions& options, int type_before) {
  shown_ = options;
  LowerCaptions(stockbook_.control());
  PutColumnsBack(type_before);
  // The names depend on what the user has shown and hidden.
  ComposeNames(stockbook_.control());
}

// Let the keyboard start from a visible cell.
void ShownJournal::GoToFirstCell() {
  platform::Grid& grid = stockbook_.Grid();
  if (grid.Rows() > grid.FixedRows() && grid.OutlineCol() >= 0) grid.Select(grid.FixedRows(), grid.OutlineCol());
}

}  // namespace stockbook::app
