// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "sheet/store/column_set.h"
#include "sheet/store/row_order.h"
#include "stockbook/base/value.h"
#include "stockbook/columns/column.h"
#include "stockbook/platform/grid_types.h"
#include "stockbook/sheet/store/cell_style.h"

namespace stockbook::sheet {

// The cells of a sheet: whole columns of values, the order of the rows, and what was set on single cells. The caller
// checks rows and columns. Outline levels, heights and displayed colours are unknown here.
class Store {
 public:
  static constexpr int kMostRows = 1 << 30;

  int Rows() const { return static_cast<int>(order_.Rows()); }
  const RowOrder& order() const { return order_; }
  ColumnSet& columns() { return columns_; }
  const ColumnSet& columns() const { return columns_; }
  const CellStyles& styles() const { return styles_; }

  // Makes room for a few changes of the order of the rows: they need no memory then.
  void Reserve() { order_.Reserve(); }
  void InsertRows(int row, int count) { order_.Insert(row, count); }
  // Takes over an order of the same rows and inserted ones.
  void SetOrder(RowOrder order) { order_ = std::move(order); }
  // Forgets what belongs to rows that are removed next. Needs memory where styles are cut in two.
  void EraseCells(int row, int count);
  void RemoveRows(int row, int count) { order_.Remove(row, count); }

  // Throws platform::Error if the columns cannot be rows behind the fixed ones: all of them must have as many values,
  // and no more than a grid can show.
  static size_t CheckColumns(const std::vector<columns::Column>& columns, int fixed_rows);
  // Adds the columns' rows behind the fixed ones, which must be all that is left, and replaces the loaded columns; see
  // platform::GridBulk. If there is no memory, there are no columns, or the columns and no rows of theirs.
  void Load(std::vector<columns::Column> columns, int first_column);
  size_t RecordCount() const { return records_; }
  // Drops the loaded columns. Rows of theirs that remain (as fixed rows) keep their contents.
  void ForgetRecords();

  std::string TextAt(int row, int column) const;
  std::string DisplayAt(int row, int column) const;
  // The same, appended to a buffer, for callers that know the row id.
  void AppendDisplay(const SheetColumn& column, RowId id, std::string& out) const;
  void SetText(int row, int column, std::string_view text) { columns_.At(column).SetText(order_.IdAt(row), text); }

  // The style of a cell, empty if none was set.
  const CellStyle& StyleAt(const SheetColumn& column, RowId id) const { return styles_.At(column.styles.At(id)); }
  platform::PictureRef PictureAt(const SheetColumn& column, RowId id, platform::PictureAlignment& alignment) const;
  // Replaces the style of every cell in the range by change(style).
  template <typename Change>
  void ChangeStyles(const platform::CellRange& range, Change change) {
    const std::vector<RowIdRange> ids = order_.IdsOf(range.row1, range.row2);
    for (int column = range.column1; column < range.column2; ++column) {
      for (const RowIdRange& part : ids) {
        columns_.At(column).styles.Update(part.first, part.last,
                                          [&](uint32_t code) { return styles_.Changed(code, change); });
      }
    }
  }
  void SetLoadedPictures(int column, LoadedPictures pictures);

  struct TextRun {
    int64_t row = 0;
    std::string text;
  };
  // The rows at which a run of equal texts begins. The ascending half-open ranges are treated as one sequence of rows.
  std::vector<TextRun> TextRuns(int column, const std::vector<std::pair<int64_t, int64_t>>& row_ranges) const;

  // The parts are valid, and the columns hold nothing for rows that no longer exist. O(pieces + cells set).
  bool CheckInvariants() const;
  // Approximate memory beyond the values of the loaded columns.
  size_t MemoryBytes() const { return order_.MemoryBytes() + columns_.MemoryBytes() + styles_.MemoryBytes(); }

 private:
  // Turns the remaining records into inserted rows with the same contents.
  void KeepRecordsAsRows();

  RowOrder order_;
  ColumnSet columns_;
  CellStyles styles_;
  size_t records_ = 0;
};

}  // namespace stockbook::sheet
