// SPDX-License-Identifier: MIT
#include "stockbook/window/shown_journal.h"

#include <QApplication>
#include <algorithm>
#include <utility>

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
  const journal::SubjectKeys keys{control.KeyID(), static_cast<int16_t>(control.dpID()), control.dpCode()};
  emit Leaving();
  if (shown_.has_value()) LearnColumns();
  const int type_before = control.JournalType();
  columns_.Hold();
  laid_out_ = false;
  loading_ = true;
  QApplication::setOverrideCursor(Qt::WaitCursor);
  LoadReport report = loader_(options);
  const bool put_back = !report.loaded && PutBackShown(report, keys);
  QApplication::restoreOverrideCursor();
  loading_ = false;
  LowerCaptions(control);
  PutColumnsBack(type_before);
  // The names depend on what the user has shown and hidden.
  ComposeNames(control);
  if (!put_back) shown_ = report.loaded ? std::optional(options) : std::nullopt;
  if (!((same && report.loaded) || put_back) || !place.GoBack(stockbook_.sheet())) GoToFirstCell();
  emit Arrived(report.loaded);
  return report;
}

// Shows the journal again that a failed load was to replace. Returns false if there is none; then the header names
// none.
bool ShownJournal::PutBackShown(const LoadReport& failed, const journal::SubjectKeys& keys) {
  control::Stockbook& control = stockbook_.control();
  // A load tells the progress 0 when it has cleared the grid.
  const bool cleared = std::find(failed.process.begin(), failed.process.end(), 0) != failed.process.end();
  if (shown_.has_value() && !cleared) {
    SetUpJournal(control, *shown_);
    control.SetdpCode(keys.dpCode);
    if (control.KeyID() != keys.KeyID) control.SetKeyID(keys.KeyID);
    return true;
  }
  if (shown_.has_value() && loader_(*shown_).loaded) return true;
  ShowNone();
  return false;
}

// Let the keyboard start from a visible cell.
void ShownJournal::GoToFirstCell() {
  platform::Grid& grid = stockbook_.Grid();
  if (grid.Rows() > grid.FixedRows() && grid.OutlineCol() >= 0) grid.Select(grid.FixedRows(), grid.OutlineCol());
}

}  // namespace stockbook::app
