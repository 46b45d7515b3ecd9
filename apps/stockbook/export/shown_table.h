// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "stockbook/base/date.h"
#include "stockbook/export/bill_parts.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {

// A cell of a workbook: nothing, a number, a day, a text.
using ShownCell = std::variant<std::monostate, double, base::Date, std::string>;

struct ShownColumn {
  std::string caption;
  std::string format;  // of the grid, "" for none
  int width_twips = 0;
  int column = -1;  // of the grid; -1 for a part of the bill
};

struct ShownRow {
  bool is_line = false;    // below the node of its period
  bool is_closed = false;  // a node whose lines are folded away
  bool is_folded = false;  // a line that is
  bool is_total = false;
  std::vector<ShownCell> cells;
};

enum class ShownColumns { kVisible, kAll };

// What a grid shows, as a table that programs can compute with: typed cells, the bill taken apart, a total row as two.
// Borrows the grid, which must not change meanwhile.
class ShownTable {
 public:
  explicit ShownTable(const sheet::GridSheet& grid, ShownColumns shown = ShownColumns::kVisible);

  const std::vector<ShownColumn>& columns() const { return columns_; }
  // How many columns of the front stay in view.
  int frozen_columns() const { return frozen_columns_; }
  // Gets a row, and which one of the grid it comes from; false when it wants no more.
  using TakeRow = std::function<bool(int grid_row, const ShownRow& row)>;
  // Calls `take` with the rows in order. False if it did not take them all.
  bool ForEachRow(const TakeRow& take) const;

 private:
  void AddColumn(int column);
  void AddBillColumns(int column);
  ShownCell CellOf(int row, const ShownColumn& column) const;
  void FillLine(int row, ShownRow& shown) const;
  bool IsTotal(int row) const;
  // The line of a total's cells with this number.
  void FillTotal(int row, size_t line, ShownRow& shown) const;

  const sheet::GridSheet& grid_;
  BillSplitter bills_;
  std::vector<ShownColumn> columns_;
  size_t bill_at_ = 0;  // where the parts of the bill begin
  bool has_bill_ = false;
  int frozen_columns_ = 0;
};

}  // namespace stockbook::app
