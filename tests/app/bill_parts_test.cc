// SPDX-License-Identifier: MIT
#include "stockbook/export/bill_parts.h"

#include <gtest/gtest.h>

#include <array>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "stockbook/base/column_keys.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/command/journal_export.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

constexpr int kBills = 20'000;  // several parts for two threads

std::string DayOf(int bill) { return bill % 2 == 0 ? "2025-01-31" : "2025-02-01"; }
std::string PeriodOf(int bill) { return DayOf(bill).substr(0, 7); }
std::string KindOf(int bill) { return bill % 3 == 0 ? "采购单" : "销售单"; }

// A journal's columns as far as bills need them, without its inserted rows.
void FillBills(sheet::GridSheet& sheet) {
  const std::array<const char*, 4> names{keys::kPeriod, keys::kBillDate, keys::kBillName, keys::kBillNo};
  std::array<columns::ColumnBuilder, 4> builders;
  for (int bill = 0; bill < kBills; ++bill) {
    builders[0].AppendText(PeriodOf(bill));
    builders[1].AppendText(DayOf(bill));
    builders[2].AppendText(KindOf(bill));
    builders[3].AppendText(DayOf(bill) + " " + KindOf(bill) + " N-" + std::to_string(bill));
  }
  sheet.SetRows(1);
  sheet.SetCols(1);
  std::vector<columns::Column> loaded;
  for (columns::ColumnBuilder& builder : builders) loaded.push_back(builder.Finish());
  sheet.LoadColumns(std::move(loaded), 1);
  for (size_t column = 0; column < names.size(); ++column) sheet.SetColKey(static_cast<int>(column) + 1, names[column]);
}

TEST(BillParts, TakesTheBillOfALineApart) {
  sheet::GridSheet sheet;
  FillBills(sheet);
  const BillParts parts = BillSplitter(sheet).Of(1);
  EXPECT_EQ(parts.period, "2025-01");
  EXPECT_EQ(parts.day, "2025-01-31");
  EXPECT_EQ(parts.kind, "采购单");
  EXPECT_EQ(parts.number, "N-0");
}

TEST(BillParts, KeepsTheCaptionOfARowThatIsNoLine) {
  sheet::GridSheet sheet;
  FillBills(sheet);
  sheet.AddItem("", 1);
  sheet.SetTextMatrix(1, sheet.ColIndex(keys::kBillNo), "2025年01月期初");
  const BillParts parts = BillSplitter(sheet).Of(1);
  EXPECT_EQ(parts.period, "2025年01月期初");
  EXPECT_EQ(parts.day + parts.kind + parts.number, "");
}

TEST(BillParts, KeepsANumberThatDoesNotBeginWithItsDayAndKind) {
  sheet::GridSheet sheet;
  FillBills(sheet);
  sheet.SetTextMatrix(1, sheet.ColIndex(keys::kBillNo), "X 7");
  EXPECT_EQ(BillSplitter(sheet).Of(1).number, "X 7");
}

TEST(BillParts, LeavesTheTimeOfABillOutOfItsNumber) {
  sheet::GridSheet sheet;
  FillBills(sheet);
  sheet.SetTextMatrix(1, sheet.ColIndex(keys::kBillDate), "2025-01-31 08:30:00");
  for (const char* bill : {"2025-01-31 08:30:00 采购单 N-0", "2025-01-31采购单 N-0"}) {
    sheet.SetTextMatrix(1, sheet.ColIndex(keys::kBillNo), bill);
    const BillParts parts = BillSplitter(sheet).Of(1);
    EXPECT_EQ(parts.day, "2025-01-31") << bill;
    EXPECT_EQ(parts.number, "N-0") << bill;
  }
}

TEST(BillParts, TakesABillWithoutADateApart) {
  sheet::GridSheet sheet;
  FillBills(sheet);
  sheet.SetTextMatrix(1, sheet.ColIndex(keys::kBillDate), "");
  sheet.SetTextMatrix(1, sheet.ColIndex(keys::kBillNo), " 采购单 N-0");
  const BillParts parts = BillSplitter(sheet).Of(1);
  EXPECT_EQ(parts.day, "");
  EXPECT_EQ(parts.kind, "采购单");
  EXPECT_EQ(parts.number, "N-0");
}

TEST(BillParts, AreWrittenForEveryRowOfALongJournal) {
  sheet::GridSheet sheet;
  FillBills(sheet);
  for (const int column : {1, 2, 3}) sheet.SetColHidden(column, true);
  std::ostringstream out;
  SeparatedOptions options;
  options.bill = BillColumns::kApart;
  WriteSeparated(sheet, options, out);
  std::string expected = ",期间,日期,单据,单据编号\n";
  for (int bill = 0; bill < kBills; ++bill) {
    expected += "," + PeriodOf(bill) + "," + DayOf(bill) + "," + KindOf(bill) + ",N-" + std::to_string(bill) + "\n";
  }
  EXPECT_TRUE(out.str() == expected) << out.str().substr(0, 200);
}

}  // namespace
}  // namespace stockbook::app
