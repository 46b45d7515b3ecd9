// SPDX-License-Identifier: MIT
#include "stockbook/export/shown_table.h"

#include <array>
#include <string_view>

#include "base/text.h"
#include "sheet/outline/row_states.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/base/value.h"

namespace stockbook::app {
namespace {

constexpr int kTwipsOfPeriod = 1800;
constexpr int kTwipsOfDay = 1300;
constexpr int kTwipsOfKind = 1000;
constexpr int kTwipsOfNumber = 2000;
constexpr std::array<std::string_view, 2> kTotalLines{"（本期）", "（累计）"};

bool IsNumeric(platform::DataType type) {
  return type == platform::DataType::kLong || type == platform::DataType::kDouble ||
         type == platform::DataType::kCurrency;
}

bool IsDay(const std::string& format) { return format.find("yy") != std::string::npos; }

ShownCell NumberCell(const std::string& text) {
  if (text.empty()) return {};
  const std::string bare = base::ReplaceAll(text, ",", "");
  const bool percent = bare.ends_with('%');
  const auto number = base::Value(percent ? bare.substr(0, bare.size() - 1) : bare).Number();
  if (!number) return text;
  return percent ? *number / 100 : *number;
}

ShownCell TextCell(std::string text) {
  if (text.empty()) return {};
  return text;
}

ShownCell DayCell(const std::string& text) {
  const auto date = base::Date::Parse(text);
  if (date) return *date;
  return TextCell(text);
}

}  // namespace

ShownTable::ShownTable(const sheet::GridSheet& grid, ShownColumns shown) : grid_(grid), bills_(grid) {
  for (int column = 0; column < grid.Cols(); ++column) {
    if (shown == ShownColumns::kVisible && grid.ColHidden(column)) continue;
    if (grid.ColKey(column) == base::keys::kBillNo) {
      AddBillColumns(column);
    } else if (column >= grid.FixedCols() || !grid.TextMatrix(0, column).empty()) {
      AddColumn(column);
    }
  }
}

void ShownTable::AddColumn(int column) {
  const std::string caption = base::OneLine(grid_.TextMatrix(0, column), "");
  columns_.push_back({caption, grid_.ColFormat(column), grid_.ColWidth(column), column});
  if (column <= grid_.FrozenCols()) frozen_columns_ = static_cast<int>(columns_.size());
}

void ShownTable::AddBillColumns(int column) {
  has_bill_ = true;
  bill_at_ = columns_.size();
  columns_.push_back({std::string(kPeriodCaption), "", kTwipsOfPeriod, -1});
  columns_.push_back({std::string(kBillDayCaption), "yyyy-mm-dd", kTwipsOfDay, -1});
  columns_.push_back({std::string(kBillKindCaption), "", kTwipsOfKind, -1});
  columns_.push_back({std::string(kBillNumberCaption), "", kTwipsOfNumber, -1});
  if (column <= grid_.FrozenCols()) frozen_columns_ = static_cast<int>(columns_.size());
}

ShownCell ShownTable::CellOf(int row, const ShownColumn& column) const {
  const std::string text = grid_.TextMatrix(row, column.column);
  const platform::DataType type = grid_.ColDataType(column.column);
  if (IsNumeric(type)) return NumberCell(text);
  if (type == platform::DataType::kDate || IsDay(column.format)) return DayCell(text);
  return TextCell(grid_.DisplayText(row, column.column));
}

void ShownTable::FillLine(int row, ShownRow& shown) const {
  shown.cells.clear();
  for (const ShownColumn& column : columns_)
    shown.cells.push_back(column.column < 0 ? ShownCell() : CellOf(row, column));
  if (!has_bill_) return;
  const BillParts parts = bills_.Of(row);
  ShownCell* const bill = shown.cells.data() + bill_at_;
  bill[0] = TextCell(parts.period);
  bill[1] = DayCell(parts.day);
  bill[2] = TextCell(parts.kind);
  bill[3] = TextCell(parts.number);
}

// A total has two numbers in some cell, one below the other.
bool ShownTable::IsTotal(int row) const {
  if (!grid_.IsSubtotal(row)) return false;
  for (const ShownColumn& column : columns_) {
    if (column.column >= 0 && IsNumeric(grid_.ColDataType(column.column)) &&
        grid_.TextMatrix(row, column.column).find('\n') != std::string::npos)
      return true;
  }
  return false;
}

void ShownTable::FillTotal(int row, size_t line, ShownRow& shown) const {
  FillLine(row, shown);
  for (size_t at = 0; at < columns_.size(); ++at) {
    auto* const text = std::get_if<std::string>(&shown.cells[at]);
    if (text == nullptr) continue;
    if (has_bill_ && at == bill_at_) {
      text->append(kTotalLines[line]);
    } else if (const size_t end = text->find('\n'); end != std::string::npos) {
      shown.cells[at] = NumberCell(line == 0 ? text->substr(0, end) : text->substr(end + 1));
    }
  }
}

bool ShownTable::ForEachRow(const TakeRow& take) const {
  ShownRow shown;
  for (int row = grid_.FixedRows(); row < grid_.Rows(); ++row) {
    const sheet::RowState state = grid_.states().At(row);
    if (state.hidden) continue;
    shown.is_line = !state.subtotal && state.level > 0;
    shown.is_closed = state.subtotal && state.collapsed;
    shown.is_folded = state.covered;
    shown.is_total = IsTotal(row);
    for (size_t line = 0; line < (shown.is_total ? kTotalLines.size() : 1); ++line) {
      if (shown.is_total) {
        FillTotal(row, line, shown);
      } else {
        FillLine(row, shown);
      }
      if (!take(row, shown)) return false;
    }
  }
  return true;
}

}  // namespace stockbook::app
