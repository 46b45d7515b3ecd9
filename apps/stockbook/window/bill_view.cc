// SPDX-License-Identifier: MIT
#include "stockbook/window/bill_view.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/column_keys.h"
#include "base/text.h"
#include "grid/row_runs.h"
#include "sheet/format/cell_format.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

struct Fact {
  const char* key;
  const char* label;
};
constexpr std::array<Fact, 8> kFacts = {{{keys::kBillDate, "日期"},
                                         {keys::kEnterprise, "往来单位"},
                                         {keys::kProject, "项目"},
                                         {keys::kDepot, "仓库"},
                                         {keys::kInputor, "录入员"},
                                         {keys::kInputDate, "录入日期"},
                                         {keys::kAuditor, "审核员"},
                                         {keys::kAuditDate, "审核日期"}}};
// The columns shown above the lines, and the running stock, which belongs to the journal and not to the bill.
constexpr std::string_view kNotOfALine = "|BillNo|BillKind|BillName|Period|StoPrice|StoQty|StoQty2|StoAcc|";

bool IsFact(const std::string& key) {
  return std::any_of(kFacts.begin(), kFacts.end(), [&](const Fact& fact) { return key == fact.key; });
}

std::vector<int> RowsOfBill(const control::Stockbook& control, int32_t bill_id, const std::string& kind) {
  constexpr size_t kBlock = 4096;
  const platform::Grid& grid = control.Grid();
  const int column = grid.ColIndex(keys::kBillID);
  // Edited cells are read one by one.
  const columns::Column* keys = grid.HasEditedRecords(column) ? nullptr : grid.LoadedText(column);
  std::vector<int> rows;
  std::vector<double> numbers(kBlock);
  const auto add = [&](int row) {
    if (control.BillID(row) == bill_id && control.BillName(row) == kind) rows.push_back(row);
  };
  for (grid::RowRun run = grid::RowRunAt(grid, grid.FixedRows()); run.count > 0;
       run = grid::RowRunAt(grid, run.End())) {
    for (int at = 0; at < run.count; ++at) {
      if (keys == nullptr || run.record < 0) {
        add(run.row + at);
        continue;
      }
      if (at % static_cast<int>(kBlock) == 0) keys->ReadNumbers(static_cast<size_t>(run.record + at), numbers);
      if (numbers[static_cast<size_t>(at) % kBlock] == bill_id) add(run.row + at);
    }
  }
  return rows;
}

bool IsNumber(const platform::Grid& grid, int column) { return sheet::IsNumberType(grid.ColDataType(column)); }

bool TellsSomething(const platform::Grid& grid, const std::vector<int>& rows, int column) {
  return std::any_of(rows.begin(), rows.end(), [&](int row) {
    const std::string text = grid.TextMatrix(row, column);
    return !text.empty() && !(IsNumber(grid, column) && text == "0");
  });
}

// A value that all lines share is shown once; otherwise it gets a column, like the depots of a transfer.
void ReadFacts(const platform::Grid& grid, const std::vector<int>& rows, BillView& bill) {
  for (const Fact& fact : kFacts) {
    const int column = grid.ColIndex(fact.key);
    if (column < 0) continue;
    const std::string text = grid.DisplayText(rows.front(), column);
    const bool shared =
        std::all_of(rows.begin(), rows.end(), [&](int row) { return grid.DisplayText(row, column) == text; });
    if (shared && !text.empty()) bill.facts.emplace_back(fact.label, text);
    if (shared) continue;
    bill.columns.push_back({fact.label, false});
    for (size_t line = 0; line < rows.size(); ++line) bill.lines[line].push_back(grid.DisplayText(rows[line], column));
  }
}

}  // namespace

BillView ReadBill(const control::Stockbook& control, int row) {
  const platform::Grid& grid = control.Grid();
  BillView bill;
  bill.bill_id = control.BillID(row);
  bill.kind = control.BillName(row);
  if (bill.bill_id <= 0) return bill;
  const std::vector<int> rows = RowsOfBill(control, bill.bill_id, bill.kind);
  if (rows.empty()) return bill;
  if (const int column = grid.ColIndex(keys::kBillNo); column >= 0) bill.number = grid.TextMatrix(rows.front(), column);
  bill.lines.resize(rows.size());
  ReadFacts(grid, rows, bill);
  for (int column = grid.FixedCols(); column < grid.Cols(); ++column) {
    const std::string key = grid.ColKey(column);
    if (grid.ColHidden(column) || IsFact(key) || kNotOfALine.find("|" + key + "|") != std::string_view::npos) continue;
    if (!TellsSomething(grid, rows, column)) continue;
    bill.columns.push_back({base::OneLine(grid.TextMatrix(0, column), ""), IsNumber(grid, column)});
    for (size_t line = 0; line < rows.size(); ++line) bill.lines[line].push_back(grid.DisplayText(rows[line], column));
  }
  return bill;
}

}  // namespace stockbook::app
