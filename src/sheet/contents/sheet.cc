// SPDX-License-Identifier: MIT
#include "stockbook/sheet/contents/sheet.h"

#include <algorithm>

#include "sheet/contents/kept_sheet.h"
#include "sheet/outline/outline.h"
#include "sheet/outline/row_states.h"
#include "sheet/store/store.h"
#include "stockbook/platform/error.h"

namespace stockbook::sheet {

using platform::CellRange;
using platform::Error;

struct Sheet::Parts {
  Store store;
  RowStates states;
  Outline outline{states};
  SheetRevisions revisions;
};

Sheet::Sheet()
    : parts_(std::make_unique<Parts>()),
      store_(parts_->store),
      states_(parts_->states),
      outline_(parts_->outline),
      revisions_(parts_->revisions) {
  store_.columns().SetCount(fixed_cols_);
  InsertRows(0, fixed_rows_);
}

Sheet::~Sheet() {
  Tell([](SheetWatcher& watcher) { watcher.SheetGone(); });
}

int Sheet::Cols() const { return store_.columns().Count(); }

int Sheet::Rows() const { return store_.Rows(); }

int64_t Sheet::TextRevision() const { return std::max(revisions_.texts, revisions_.loaded); }

int64_t Sheet::ColRevision() const { return revisions_.columns; }

int64_t Sheet::Revision() const { return revisions_.rows; }

int64_t Sheet::LoadedRevision() const { return revisions_.loaded; }

size_t Sheet::RecordCount() const { return store_.RecordCount(); }

size_t Sheet::EngineBytes() const {
  return store_.MemoryBytes() + states_.MemoryBytes() + sizeof(Sheet) + sizeof(Parts);
}

void Sheet::CheckRow(const char* operation, int row) const {
  if (HasRow(row)) return;
  throw Error(operation, std::string(operation) + ": there is no row " + std::to_string(row) +
                             "; the grid has rows 0 to " + std::to_string(Rows() - 1) + ".");
}

void Sheet::CheckColumn(const char* operation, int column) const {
  if (HasColumn(column)) return;
  throw Error(operation, std::string(operation) + ": there is no column " + std::to_string(column) +
                             "; the grid has columns 0 to " + std::to_string(Cols() - 1) + "." +
                             (column == -1 ? " ColIndex gives -1 for a key that no column has." : ""));
}

void Sheet::CheckCell(const char* operation, int row, int column) const {
  CheckRow(operation, row);
  CheckColumn(operation, column);
}

bool Sheet::CheckRange(const char* operation, const CellRange& range) const {
  if (range.row1 >= range.row2 || range.column1 >= range.column2) return false;
  CheckCell(operation, range.row1, range.column1);
  CheckCell(operation, range.row2 - 1, range.column2 - 1);
  return true;
}

void Sheet::InsertRows(int row, int count) {
  if (count <= 0) return;
  Renew(revisions_.rows);
  store_.Reserve();
  outline_.Reserve();
  store_.InsertRows(row, count);
  outline_.InsertRows(row, count);
  const int64_t before = row;
  Tell([&](SheetWatcher& watcher) { watcher.RowsInserted({&before, 1}, count); });
}

void Sheet::RemoveRows(int row, int count) {
  if (count <= 0) return;
  Renew(revisions_.rows);
  DropRows(row, count);
  Tell([&](SheetWatcher& watcher) { watcher.RowsRemoved(row, count); });
}

void Sheet::DropRows(int row, int count) {
  store_.EraseCells(row, count);
  store_.Reserve();
  outline_.Reserve();
  store_.RemoveRows(row, count);
  outline_.RemoveRows(row, count);
}

int Sheet::PinnedCols() const {
  const int pinned = frozen_cols_ >= fixed_cols_ && frozen_cols_ > 0 ? frozen_cols_ + 1 : fixed_cols_;
  return std::min(pinned, Cols());
}

int Sheet::FirstShownColumn() const {
  for (int column = fixed_cols_; column < Cols(); ++column) {
    if (!store_.columns().At(column).hidden) return column;
  }
  return fixed_cols_;
}

CellPart Sheet::PartOf(int row, int column) const {
  if (row < fixed_rows_ || column < fixed_cols_) return CellPart::kFixed;
  return column < PinnedCols() ? CellPart::kFrozen : CellPart::kBody;
}

void Sheet::ColumnsChanged() {
  Tell([](SheetWatcher& watcher) { watcher.ColumnsChanged(); });
}

void Sheet::RowsChanged() {
  Tell([](SheetWatcher& watcher) { watcher.RowsChanged(); });
}

void Sheet::LooksChanged() {
  if (redraw_) Tell([](SheetWatcher& watcher) { watcher.LooksChanged(); });
}

void Sheet::CellsChanged(const CellRange& range) {
  if (redraw_) Tell([&](SheetWatcher& watcher) { watcher.CellsChanged(range); });
}

void Sheet::EverythingChanged() {
  if (redraw_) Tell([](SheetWatcher& watcher) { watcher.EverythingChanged(); });
}

void Sheet::SetRedraw(bool on) {
  if (redraw_ == on) return;
  redraw_ = on;
  EverythingChanged();
}

bool Sheet::CheckInvariants() const {
  const bool pinned = fixed_rows_ >= 0 && fixed_rows_ <= Rows() && fixed_cols_ >= 0 && fixed_cols_ <= Cols() &&
                      frozen_cols_ >= 0 && PinnedCols() >= fixed_cols_;
  return store_.CheckInvariants() && outline_.CheckInvariants() && pinned && states_.Rows() == Rows();
}

}  // namespace stockbook::sheet
