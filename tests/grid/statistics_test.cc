// SPDX-License-Identifier: MIT
#include "grid/statistics.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "stockbook/base/money.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::grid {
namespace {

struct Bill {
  int64_t id;
  std::string name;
};

// Two columns, BillID and BillName, as a load leaves them.
class Bills : public ::testing::Test {
 protected:
  Bills() {
    sheet_.SetCols(3);
    sheet_.SetColKey(1, "BillID");
    sheet_.SetColKey(2, "BillName");
  }
  void Load(const std::vector<Bill>& bills) {
    columns::ColumnBuilder ids;
    columns::ColumnBuilder names;
    for (const Bill& bill : bills) {
      ids.AppendInteger(bill.id);
      names.AppendText(bill.name);
    }
    std::vector<columns::Column> columns;
    columns.push_back(ids.Finish());
    columns.push_back(names.Finish());
    sheet_.LoadColumns(std::move(columns), 1);
  }
  static std::string Counts(int receipts, int issues, int transfers) {
    return "单据共：" + std::to_string(receipts + issues + transfers) +
           " 张\r\n  其中:\r\n    入库单:" + std::to_string(receipts) + "张\r\n    出库单:" + std::to_string(issues) +
           "张\r\n    调拨单:" + std::to_string(transfers) + "张";
  }
  sheet::GridSheet sheet_;
};

constexpr const char* kNone = "未找到输入单据";

TEST_F(Bills, AreCountedByKindAndInAll) {
  Load({{1, "入库单"}, {2, "出库单"}, {3, "入库单"}, {4, "入库单"}});
  EXPECT_EQ(Statistics(sheet_), Counts(3, 1, 0));
  Load({{1, "调拨单"}});
  EXPECT_EQ(Statistics(sheet_), Counts(0, 0, 1));
}

TEST_F(Bills, OfPurchaseAndSaleAreNotCounted) {
  Load({{1, "采购单"}, {2, "销售单"}});
  EXPECT_EQ(Statistics(sheet_), kNone);
}

TEST_F(Bills, CountOncePerRowAndOnlyWithAPositiveKey) {
  Load({{5, "入库单"}, {5, "入库单"}, {0, "入库单"}, {-5, "入库单"}});
  EXPECT_EQ(Statistics(sheet_), Counts(2, 0, 0));
}

TEST_F(Bills, MustBeNamedExactly) {
  Load({{1, "入库单 "}, {2, " 入库单"}, {3, ""}, {4, "入库"}});
  EXPECT_EQ(Statistics(sheet_), kNone);
}

TEST_F(Bills, AreCountedInInsertedRowsAsWell) {
  Load({{1, "入库单"}, {2, "出库单"}});
  sheet_.AddItem("\t7\t调拨单", 2);
  sheet_.AddItem("\t\t入库单", 1);
  EXPECT_EQ(Statistics(sheet_), Counts(1, 1, 1));
}

TEST_F(Bills, AreCountedAsTheyStandWhenCellsWereWritten) {
  Load({{1, "入库单"}, {2, "出库单"}, {3, "出库单"}});
  sheet_.SetTextMatrix(1, 2, "调拨单");
  sheet_.SetTextMatrix(2, 1, "0");
  EXPECT_EQ(Statistics(sheet_), Counts(0, 1, 1));
}

TEST_F(Bills, ThatWereTakenOutAreNotCounted) {
  Load({{1, "入库单"}, {2, "出库单"}, {3, "出库单"}});
  sheet_.RemoveItem(2);
  EXPECT_EQ(Statistics(sheet_), Counts(1, 1, 0));
}

TEST_F(Bills, AreTooManyBeyondSixteenBits) {
  const auto many = [](size_t count, const char* name) { return std::vector<Bill>(count, Bill{1, name}); };
  Load(many(32767, "入库单"));
  EXPECT_EQ(Statistics(sheet_), Counts(32767, 0, 0));
  Load(many(32768, "入库单"));
  EXPECT_THROW(Statistics(sheet_), base::ArithmeticError);
  std::vector<Bill> mixed = many(20000, "入库单");
  for (const Bill& bill : many(12768, "出库单")) mixed.push_back(bill);
  Load(mixed);
  EXPECT_THROW(Statistics(sheet_), base::ArithmeticError);
}

TEST_F(Bills, OfOtherNamesMayBeAsManyAsTheyLike) {
  std::vector<Bill> bills(100000, Bill{1, "采购单"});
  bills.push_back({1, "入库单"});
  Load(bills);
  EXPECT_EQ(Statistics(sheet_), Counts(1, 0, 0));
}

}  // namespace
}  // namespace stockbook::grid
