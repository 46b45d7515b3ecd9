// SPDX-License-Identifier: MIT
// Sheet as platform::GridRows and platform::GridBulk.
#include <algorithm>
#include <memory>
#include <utility>

#include "base/text.h"
#include "sheet/contents/kept_sheet.h"
#include "sheet/outline/outline.h"
#include "sheet/outline/row_states.h"
#include "sheet/store/store.h"
#include "stockbook/platform/error.h"
#include "stockbook/sheet/contents/sheet.h"

namespace stockbook::sheet {
namespace {

constexpr int kMostHeight = 1440 * 100;  // twips: 100 inches

}  // namespace

using columns::Column;
using platform::Error;
using platform::PictureAlignment;
using platform::PictureRef;

void Sheet::SetRows(int count) {
  if (count < 0 || count > Store::kMostRows) {
    throw Error("Rows", "Rows: " + std::to_string(count) + " is no number of rows; use 0 to " +
                            std::to_string(Store::kMostRows) + ".");
  }
  if (count == Rows()) return;
  if (count > Rows()) {
    InsertRows(Rows(), count - Rows());
  } else {
    RemoveRows(count, Rows() - count);
  }
  const bool keeps_records = count > fixed_rows_;
  fixed_rows_ = std::min(fixed_rows_, count);
  const auto forget = [&] {
    if (keeps_records) return;
    Renew(revisions_.loaded);
    store_.ForgetRecords();
  };
  Telling(forget, [&] { RowsChanged(); });
}

void Sheet::SetFixedRows(int count) {
  if (count < 0 || count > Rows()) {
    throw Error("FixedRows", "FixedRows: " + std::to_string(count) + " rows cannot be fixed; the grid has " +
                                 std::to_string(Rows()) + ".");
  }
  Renew(revisions_.rows);
  const int before = std::exchange(fixed_rows_, count);
  Tell([&](SheetWatcher& watcher) { watcher.FixedRowsChanged(before); });
  RowsChanged();
}

void Sheet::AddItem(std::string_view tab_text, int position) {
  if (position < fixed_rows_ || position > Rows() || Rows() >= Store::kMostRows) {
    throw Error("AddItem", "AddItem: a row cannot be inserted at " + std::to_string(position) + "; use " +
                               std::to_string(fixed_rows_) + " to " + std::to_string(Rows()) + ".");
  }
  InsertRows(position, 1);
  const auto fill = [&] {
    if (tab_text.empty()) return;
    int column = 0;
    for (const std::string_view text : base::Split(tab_text, '\t')) {
      if (column >= Cols()) break;
      store_.SetText(position, column++, text);
    }
  };
  Telling(fill, [&] { RowsChanged(); });
}

void Sheet::RemoveItem(int row) {
  CheckRow("RemoveItem", row);
  if (row < fixed_rows_) {
    throw Error("RemoveItem",
                "RemoveItem: row " + std::to_string(row) + " is a fixed row; only data rows can be removed.");
  }
  RemoveRows(row, 1);
  RowsChanged();
}

bool Sheet::RowHidden(int row) const {
  CheckRow("RowHidden", row);
  return !states_.At(row).IsShown();
}

void Sheet::SetRowHidden(int row, bool hidden) {
  CheckRow("RowHidden", row);
  states_.Update(row, row + 1, [&](RowState& state) { state.hidden = hidden; });
  // Showing a row also unfolds the nodes that cover it.
  while (!hidden && states_.At(row).covered) outline_.SetCollapsed(states_.UncoveredBefore(row), false);
  RowsChanged();
}

void Sheet::SetRowsHidden(int first, int last, bool hidden) {
  if (first >= last) return;
  CheckRow("RowHidden", first);
  CheckRow("RowHidden", last - 1);
  states_.Update(first, last, [&](RowState& state) { state.hidden = hidden; });
  RowsChanged();
}

int Sheet::RowHeight(int row) const {
  CheckRow("RowHeight", row);
  return states_.heights().TwipsOf(states_.At(row).height_twips);
}

void Sheet::SetRowHeight(int row, int twips) {
  if (twips < 0) {
    throw Error("RowHeight", "RowHeight: " + std::to_string(twips) + " is no height; use 0 or more twips.");
  }
  twips = std::min(twips, kMostHeight);
  if (row != -1) {
    SetOwnRowHeight(row, twips);
    return;
  }
  states_.Update(0, Rows(), [](RowState& state) { state.height_twips = RowState::kDefaultHeight; });
  RowHeights heights = states_.heights();
  heights.default_twips = twips;
  SetHeights(heights);
}

void Sheet::SetOwnRowHeight(int row, int32_t height_twips) {
  CheckRow("RowHeight", row);
  if (states_.At(row).height_twips == height_twips) return;
  states_.Update(row, row + 1, [&](RowState& state) { state.height_twips = height_twips; });
  RowsChanged();
}

void Sheet::SetHeights(const RowHeights& heights) {
  states_.SetHeights(heights);
  RowsChanged();
}

float Sheet::RowHeightMin() const { return states_.heights().min_twips; }

float Sheet::RowHeightMax() const { return states_.heights().max_twips; }

void Sheet::SetRowHeightMin(float twips) {
  RowHeights heights = states_.heights();
  heights.min_twips = std::clamp(twips, 0.0F, static_cast<float>(kMostHeight));
  SetHeights(heights);
}

void Sheet::SetRowHeightMax(float twips) {
  RowHeights heights = states_.heights();
  heights.max_twips = std::clamp(twips, 0.0F, static_cast<float>(kMostHeight));
  SetHeights(heights);
}

void Sheet::LoadColumns(std::vector<Column> columns, int first_column) {
  if (first_column < 0 || first_column > Cols()) {
    throw Error("Load", "There is no column " + std::to_string(first_column) + " to load into; use 0 to " +
                            std::to_string(Cols()) + ".");
  }
  Store::CheckColumns(columns, fixed_rows_);
  Renew(revisions_.rows);
  Renew(revisions_.loaded);
  const auto told = [&] {
    Tell([](SheetWatcher& watcher) { watcher.RowsReplaced(); });
    ColumnsChanged();
  };
  Telling([&] { ReplaceRows(std::move(columns), first_column); }, told);
}

void Sheet::ReplaceRows(std::vector<Column> columns, int first_column) {
  if (Rows() > fixed_rows_) DropRows(fixed_rows_, Rows() - fixed_rows_);
  outline_.Reserve();
  store_.Load(std::move(columns), first_column);
  outline_.InsertRows(fixed_rows_, Rows() - fixed_rows_);
}

int Sheet::RowOfRecord(size_t record) const {
  return static_cast<int>(store_.order().RowOfRecord(static_cast<int64_t>(record)));
}

int64_t Sheet::RecordOfRow(int row) const {
  const RowId id = HasRow(row) ? store_.order().IdAt(row) : -1;
  return std::max<int64_t>(id, -1);
}

int Sheet::RecordsFrom(int row) const { return HasRow(row) ? static_cast<int>(store_.order().RecordsFrom(row)) : 0; }

const Column* Sheet::LoadedText(int column) const {
  return HasColumn(column) ? store_.columns().At(column).LoadedText() : nullptr;
}

const Column* Sheet::LoadedData(int column) const {
  return HasColumn(column) ? store_.columns().At(column).LoadedData() : nullptr;
}

bool Sheet::HasEditedRecords(int column) const {
  return HasColumn(column) && store_.columns().At(column).HasEditedRecords();
}

void Sheet::CheckRecords(const char* operation, int column, size_t count) const {
  CheckColumn(operation, column);
  if (count == RecordCount()) return;
  throw Error(operation, std::string(operation) + ": " + std::to_string(count) + " values for " +
                             std::to_string(RecordCount()) + " records; hand over one value for each.");
}

void Sheet::ReplaceLoaded(int column, Column values) {
  CheckRecords("ReplaceLoaded", column, values.size());
  Renew(revisions_.loaded);
  store_.columns().At(column).Load(std::make_shared<const Column>(std::move(values)));
  LooksChanged();
}

void Sheet::ReplaceLoadedText(int column, Column texts) {
  CheckRecords("ReplaceLoadedText", column, texts.size());
  Renew(revisions_.loaded);
  store_.columns().At(column).LoadText(std::make_shared<const Column>(std::move(texts)));
  LooksChanged();
}

void Sheet::SetLoadedPictures(int column, std::vector<uint8_t> codes, std::vector<PictureRef> pictures,
                              PictureAlignment alignment) {
  CheckRecords("SetLoadedPictures", column, codes.size());
  store_.SetLoadedPictures(column, {PackedCodes(codes), std::move(pictures), alignment});
  LooksChanged();
}

}  // namespace stockbook::sheet
