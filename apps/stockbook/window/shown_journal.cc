// SPDX-License-Identifier: MIT
#include "stockbook/window/shown_journal.h"

#include <QApplication>
#include <utility>

#include "stockbook/sheet/grid_sheet.h"
#include "stockbook/window/host_layout.h"
#include "stockbook/window/reading_place.h"

namespace stockbook::app {

bool IsSameJournal(const JournalOptions& left, const JournalOptions& right) {
  return left.journal_type == right.journal_type && left.key_id == right.key_id && left.dp_id == right.dp_id &&
         left.dp_code == right.dp_code;
}

ShownJournal::ShownJournal(qt::StockbookWidget& stockbook, JournalColumns& columns)
    : stockbook_(stockbook), columns_(columns) {
  loader_ = [this](const JournalOptions& options, const std::function<void()>& arrange) {
    return app::LoadJournal(stockbook_.control(), connection_, options, {{}, arrange});
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

// As the user had them in the last journal of the type, which the names of the products depend on.
void ShownJournal::ArrangeColumns() {
  LowerCaptions(stockbook_.control());
  if (!laid_out_) return;
  platform::Grid& grid = stockbook_.Grid();
  memories_[stockbook_.control().JournalType()].PutBack(grid, stockbook_.control().ColsFilter());
  // The tree stays where it was when columns move.
  grid.SetOutlineCol(grid.ColIndex(stockbook_.control().OutlineColKey()));
}

LoadReport ShownJournal::Load(const JournalOptions& options) {
  if (connection_ == nullptr || loading_) return {};
  control::Stockbook& control = stockbook_.control();
  const ReadingPlace place(stockbook_.sheet());
  const bool same = shown_.has_value() && IsSameJournal(*shown_, options);
  emit Leaving();
  if (shown_.has_value()) LearnColumns();
  columns_.Hold();
  std::shared_ptr<control::KeptJournal> kept = control.Keep();
  sheet::GridSheet::Kept kept_grid = stockbook_.sheet().Keep();
  const int type_before = control.JournalType();
  ColumnMemory& memory = memories_[options.journal_type];
  ColumnMemory kept_memory = memory;
  laid_out_ = false;
  loading_ = true;
  QApplication::setOverrideCursor(Qt::WaitCursor);
  LoadReport report = loader_(options, [this] { ArrangeColumns(); });
  QApplication::restoreOverrideCursor();
  loading_ = false;
  if (report.loaded) {
    shown_ = options;
    columns_.Settle(
        control.JournalType() == type_before ? JournalColumns::Earlier::kKept : JournalColumns::Earlier::kForgotten,
        memory.changes().frozen);
    if (!same || !place.GoBack(stockbook_.sheet())) GoToFirstCell();
  } else {
    memory = std::move(kept_memory);
    control.PutBack(std::move(*kept));
    stockbook_.sheet().PutBack(std::move(kept_grid));
    columns_.Settle(JournalColumns::Earlier::kKept);
  }
  emit Arrived(report.loaded);
  return report;
}

// Let the keyboard start from a visible cell.
void ShownJournal::GoToFirstCell() {
  platform::Grid& grid = stockbook_.Grid();
  if (grid.Rows() > grid.FixedRows() && grid.OutlineCol() >= 0) grid.Select(grid.FixedRows(), grid.OutlineCol());
}

}  // namespace stockbook::app
