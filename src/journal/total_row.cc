// SPDX-License-Identifier: MIT
#include "journal/total_row.h"

#include "base/column_keys.h"
#include "journal/periods.h"
#include "platform/error.h"

namespace stockbook::journal {
namespace {

namespace keys = base::keys;

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

void InsertTotalRow(const PeriodTotals& period, int height_twips, platform::Grid& grid) {
  const int last = grid.RowOfRecord(period.end - 1);
  if (last < 0) {
    throw platform::Error("insert total row",
                          "读入期间表格的行被删除，读入已停止：请勿在读入的事件中增删表格的行，再重新读入。");
  }
  const int row = last + 1;
  grid.AddItem("", row);
  grid.SetIsSubtotal(row, true);
  grid.SetRowOutlineLevel(row, 0);
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
