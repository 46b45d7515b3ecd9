// SPDX-License-Identifier: MIT
#include "journal/journal_rows.h"

#include <cmath>

#include "base/number.h"
#include "journal/periods.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/platform/error.h"

namespace stockbook::journal {
namespace {

namespace keys = base::keys;

constexpr const char* kOpeningWord = "期初";

// The fields of the balance that a journal opens with.
struct OpeningFields {
  const char* quantity;
  const char* quantity2;
  const char* amount;
};

OpeningFields FieldsOf(base::tqJournalTypeContants type) {
  if (type == base::SupplierJournal) return {keys::kRevQty, keys::kRevQty2, keys::kRevAcc};
  if (type == base::CustomerJournal) return {keys::kIssQty, keys::kIssQty2, keys::kIssAcc};
  return {"LastQty", "LastQty2", "LastAcc"};
}

bool IsInfinite(const base::Value& value) {
  const auto* number = value.As<double>();
  return number != nullptr && !std::isfinite(*number);
}

// An infinite balance is no number either, but zero would hide it.
double NumberOrZero(const base::Value& value) {
  return IsInfinite(value) ? *value.As<double>() : value.Number().value_or(0);
}

base::Money MoneyOrZero(const base::Value& value) {
  if (const auto money = value.AsMoney()) return *money;
  if (value.Number() || IsInfinite(value)) base::Money::ThrowOverflow();
  return {};
}

Totals ReadTotals(const platform::Recordset& balance, const OpeningFields& fields) {
  const auto number = [&](const char* field) { return NumberOrZero(balance.FieldValue(field)); };
  Totals totals;
  totals.quantity = number(fields.quantity);
  totals.quantity2 = number(fields.quantity2);
  totals.amount = MoneyOrZero(balance.FieldValue(fields.amount));
  return totals;
}

constexpr const char* kTotalWord = "合计";

// The columns of one kind of movement, and its sums.
struct TotalColumns {
  const char* quantity;
  const char* quantity2;
  const char* amount;
  Totals MovementSums::*sums;
};

constexpr TotalColumns kTotalColumns[] = {
    {keys::kQuantity, keys::kQuantity2, keys::kAccount, &MovementSums::movement},
    {keys::kRevQty, keys::kRevQty2, keys::kRevAcc, &MovementSums::receipts},
    {keys::kIssQty, keys::kIssQty2, keys::kIssAcc, &MovementSums::issues},
};

}  // namespace

void LayRows(platform::Recordset rows, platform::GridTable& grid, platform::GridOutline& outline) {
  if (rows.AtEnd()) return;
  auto fields = rows.TakeAll();
  std::vector<columns::Column> columns;
  columns.reserve(fields.size());
  for (auto& field : fields) columns.push_back(std::move(field.column));
  int column = grid.FixedCols();
  grid.LoadColumns(std::move(columns), column);
  for (const auto& field : fields) grid.SetColKey(column++, field.name);
  outline.GroupBy(grid.ColIndex(keys::kPeriod), grid.ColIndex(keys::kBillNo), "%s");
}

Totals WriteOpeningRow(const OpeningBalance& balance, base::tqJournalTypeContants type, platform::GridTable& grid) {
  const int row = grid.FixedRows();
  grid.AddItem("", row);
  const auto set_text = [&](const char* key, std::string_view text) {
    grid.SetTextMatrix(row, grid.ColIndex(key), text);
  };
  const auto set_period = [&](std::string_view period) {
    set_text(keys::kPeriod, period);
    set_text(keys::kBillNo, period.empty() ? kOpeningWord : PeriodCaption(period, kOpeningWord));
  };
  if (!balance.result || balance.result->AtEnd()) {
    set_period(balance.first_period);
    for (const char* key : keys::kRunning) set_text(key, "0");
    return {};
  }
  const std::string period = balance.result->FieldValue(keys::kPeriod).Text();
  const Totals opening = ReadTotals(*balance.result, FieldsOf(type));
  const double price = base::SafeDivide(opening.amount.ToDouble(), opening.quantity);
  set_period(period);
  set_text(keys::kStoQty, base::NumberText(opening.quantity));
  set_text(keys::kStoQty2, base::NumberText(opening.quantity2));
  set_text(keys::kStoAcc, opening.amount.Text());
  set_text(keys::kStoPrice, base::NumberText(price));
  grid.SetCellData(row, grid.ColIndex(keys::kStoAcc), base::Value(opening.amount));
  grid.SetCellData(row, grid.ColIndex(keys::kStoPrice), base::Value(price));
  return opening;
}

void InsertTotalRow(const PeriodTotals& period, int height_twips, platform::GridTable& grid,
                    platform::GridOutline& outline) {
  const int last = grid.RowOfRecord(period.end - 1);
  if (last < 0) {
    throw platform::Error("insert total row",
                          "读入期间表格的行被删除，读入已停止：请勿在读入的事件中增删表格的行，再重新读入。");
  }
  const int row = last + 1;
  grid.AddItem("", row);
  outline.SetIsSubtotal(row, true);
  outline.SetRowOutlineLevel(row, 0);
  grid.SetRowHeight(row, height_twips);
  grid.SetTextMatrix(row, grid.ColIndex(keys::kBillNo), PeriodCaption(period.period, kTotalWord));
  const auto write = [&](const char* key, const auto& in_period, const auto& in_all) {
    const int column = grid.ColIndex(key);
    grid.SetTextMatrix(
        row, column,
        grid.FormatValue(column, base::Value(in_period)) + "\n" + grid.FormatValue(column, base::Value(in_all)));
  };
  for (const TotalColumns& columns : kTotalColumns) {
    const Totals& in_period = period.in_period.*columns.sums;
    const Totals& in_all = period.in_all.*columns.sums;
    write(columns.quantity, in_period.quantity, in_all.quantity);
    write(columns.quantity2, in_period.quantity2, in_all.quantity2);
    write(columns.amount, in_period.amount, in_all.amount);
  }
}

}  // namespace stockbook::journal
