// SPDX-License-Identifier: MIT
#include "stockbook/sample/sample_inventory.h"

#include <algorithm>

#include "app/inventory_balance_check.h"
#include "app/inventory_fixture.h"
#include "stockbook/base/money.h"

namespace stockbook::app {
namespace {

using Lines = std::vector<std::string>;

class SampleTest : public InventoryTest {
 protected:
  std::string Sample(std::vector<std::string> options = {}) {
    const std::string path = PathOf("sample" + std::to_string(count_++) + ".db");
    options.insert(options.begin(), {"sample", path});
    const Outcome outcome = RunArguments(options);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    return path;
  }
  static std::string CountOf(const OpenedInventory& inventory, const std::string& from) {
    return inventory.One("SELECT count(*) FROM " + from);
  }

 private:
  int count_ = 0;
};

// All lines of receipts and issues with the columns of their bills.
const std::string kAllLines =
    "(SELECT r.*, d.AccPeriod, d.BillDate, d.单据类型, d.单据编号, 0 AS Flag FROM 入库记录 r JOIN 入库目录 d ON "
    "r.BillID = d.BillID UNION ALL "
    "SELECT r.*, d.AccPeriod, d.BillDate, d.单据类型, d.单据编号, 1 AS Flag FROM 出库记录 r JOIN 出库目录 d ON "
    "r.BillID = d.BillID)";

TEST_F(SampleTest, GivesTheSameBytesForTheSameSeedAndOthersForAnother) {
  const std::string first = ReadAll(Sample());
  EXPECT_EQ(first, ReadAll(Sample({"--seed", "1"})));
  EXPECT_NE(first, ReadAll(Sample({"--seed", "2"})));
}

TEST_F(SampleTest, HasTheNumberOfLinesAndPeriodsAskedFor) {
  const OpenedInventory usual(Sample());
  EXPECT_EQ(CountOf(usual, kAllLines), "5000");
  EXPECT_EQ(CountOf(usual, "tqAccPeriod"), "13") << "twelve with bills, and the one before them";
  EXPECT_EQ(usual.One("SELECT min(AccPeriod) || ' ' || max(AccPeriod) FROM tqAccPeriod"), "2024-12 2025-12");
  EXPECT_EQ(CountOf(usual, kAllLines + " WHERE AccPeriod = '2024-12'"), "0");
  const OpenedInventory sparse(Sample({"--lines", "7", "--periods", "300"}));
  EXPECT_EQ(CountOf(sparse, kAllLines), "7");
  EXPECT_EQ(CountOf(sparse, "tqAccPeriod"), "301");
  const OpenedInventory still(Sample({"--lines", "0", "--periods", "1"}));
  EXPECT_EQ(CountOf(still, kAllLines), "0");
  EXPECT_EQ(CountOf(still, "tqAccPeriod"), "2");
}

TEST_F(SampleTest, KeepsBalancesThatAgreeWithTheLines) {
  EXPECT_GT(CheckBalances(Sample()), 5000);
  EXPECT_GT(CheckBalances(Sample({"--seed", "99", "--lines", "3000", "--periods", "40"})), 3000);
  EXPECT_GT(CheckBalances(Sample({"--lines", "2000", "--one-product", "--periods", "5"})), 100);
}

TEST_F(SampleTest, OpensManyProductsWithStockAndAFewWithout) {
  const OpenedInventory inventory(Sample());
  const int64_t products = std::stoll(CountOf(inventory, "商品设置"));
  const int64_t opened =
      std::stoll(inventory.One("SELECT count(DISTINCT PdID) FROM 仓库余额表 WHERE AccPeriod = '2024-12' AND "
                               "上期库存数量 > 0 AND 上期库存金额 <> '0'"));
  EXPECT_GT(opened, products * 8 / 10);
  EXPECT_LT(opened, products);
}

TEST_F(SampleTest, ComputesTaxAndAmountsConsistently) {
  const OpenedInventory inventory(Sample());
  const auto rows = inventory.Rows("SELECT 数量, 除税单价, 除税金额, 税率, 税额, 单价, 金额 FROM " + kAllLines);
  ASSERT_EQ(rows.size(), 5000u);
  int64_t taxed = 0;
  for (const auto& row : rows) {
    const auto money = [&](size_t column) { return *base::Money::Parse(row[column]); };
    const double product = std::stod(row[0]) * std::stod(row[1]);
    EXPECT_NEAR(money(2).ToDouble(), product, 0.000051) << row[0] << " x " << row[1];
    EXPECT_NEAR(money(4).ToDouble(), money(2).ToDouble() * std::stod(row[3]), 0.000051);
    EXPECT_NEAR(std::stod(row[5]), std::stod(row[1]) * (1 + std::stod(row[3])), 0.000051);
    EXPECT_EQ(money(6), money(2) + money(4));
    EXPECT_GT(std::stod(row[0]), 0);
    taxed += money(4).IsZero() ? 0 : 1;
  }
  EXPECT_GT(taxed, 1000);
}

TEST_F(SampleTest, HasAllFiveKindsOfBillsAuditedAndNot) {
  const OpenedInventory inventory(Sample());
  EXPECT_EQ(inventory.Lines("SELECT DISTINCT 单据类型 FROM 入库目录 ORDER BY 1"),
            (Lines{"入库单", "调拨单", "采购单"}));
  EXPECT_EQ(inventory.Lines("SELECT DISTINCT 单据类型 FROM 出库目录 ORDER BY 1"),
            (Lines{"出库单", "调拨单", "销售单"}));
  EXPECT_EQ(inventory.Lines("SELECT DISTINCT 审核员 IS NULL, 审核日期 IS NULL FROM 出库目录 ORDER BY 1"),
            (Lines{"0|0", "1|1"}));
  EXPECT_GT(std::stoll(CountOf(inventory, kAllLines + " WHERE Qty2 > 0")), 2000);
}

TEST_F(SampleTest, LetsTransfersIssueHereAndReceiveThere) {
  const OpenedInventory inventory(Sample());
  const std::string sides =
      "SELECT d.单据编号, r.pdID, r.数量, r.Qty2, r.除税金额 FROM %记录 r JOIN %目录 d ON r.BillID = d.BillID WHERE "
      "d.单据类型 = '调拨单' ORDER BY 1, 2, 3";
  const auto side = [&](const std::string& kind) {
    std::string sql = sides;
    for (size_t at = sql.find('%'); at != std::string::npos; at = sql.find('%')) sql.replace(at, 1, kind);
    return inventory.Lines(sql);
  };
  EXPECT_GT(side("出库").size(), 100u);
  EXPECT_EQ(side("出库"), side("入库"));
  EXPECT_EQ(CountOf(inventory,
                    "出库记录 i JOIN 出库目录 d ON i.BillID = d.BillID JOIN 入库记录 r ON r.BillID = i.BillID AND "
                    "r.pdID = i.pdID "
                    "WHERE d.单据类型 = '调拨单' AND r.dpID = i.dpID AND r.数量 = i.数量"),
            "0");
}

TEST_F(SampleTest, LinksIssuesToReceiptsAndOpeningBalancesOfTheSameGoods) {
  const OpenedInventory inventory(Sample());
  EXPECT_GT(std::stoll(CountOf(inventory, "出库记录 WHERE OtherID > 0")), 500);
  EXPECT_GT(std::stoll(CountOf(inventory, "出库记录 WHERE OtherID < 0")), 100);
  EXPECT_GT(std::stoll(CountOf(inventory, "出库记录 WHERE OtherID = 0")), 100);
  EXPECT_EQ(CountOf(inventory,
                    "出库记录 i LEFT JOIN 入库记录 r ON r.RecID = i.OtherID WHERE i.OtherID > 0 AND (r.RecID IS NULL "
                    "OR r.pdID <> i.pdID "
                    "OR r.dpID <> i.dpID)"),
            "0");
  EXPECT_EQ(CountOf(inventory,
                    "出库记录 i LEFT JOIN 仓库余额表 b ON b.ID = -i.OtherID WHERE i.OtherID < 0 AND (b.ID IS NULL OR "
                    "b.PdID <> i.pdID "
                    "OR b.DpID <> i.dpID OR b.AccPeriod <> '2024-12')"),
            "0");
}

TEST_F(SampleTest, DatesBillsWithinTheirPeriods) {
  const OpenedInventory inventory(Sample());
  EXPECT_EQ(CountOf(inventory, kAllLines + " WHERE substr(BillDate, 1, 7) <> AccPeriod OR length(BillDate) <> 10"),
            "0");
  EXPECT_EQ(CountOf(inventory, "出库目录 WHERE BillDate <> printf('%04d-%02d-%02d', 年份, 月份, 日子)"), "0");
  EXPECT_EQ(inventory.One("SELECT count(DISTINCT AccPeriod) FROM " + kAllLines), "12");
}

TEST_F(SampleTest, GivesSuppliersReceiptsAndCustomersIssues) {
  const OpenedInventory inventory(Sample());
  EXPECT_EQ(
      CountOf(inventory, "入库目录 d LEFT JOIN 厂商资料 k ON k.KSID = d.ksID WHERE d.ksID <> 0 AND k.KSID IS NULL"),
      "0");
  EXPECT_EQ(
      CountOf(inventory, "出库目录 d LEFT JOIN 客户资料 k ON k.KSID = d.ksID WHERE d.ksID <> 0 AND k.KSID IS NULL"),
      "0");
  EXPECT_EQ(
      CountOf(inventory, "出库目录 d LEFT JOIN 项目设置 p ON p.项目ID = d.pjID WHERE d.pjID <> 0 AND p.项目ID IS NULL"),
      "0");
  EXPECT_EQ(CountOf(inventory,
                    "出库记录 r JOIN 出库目录 d ON r.BillID = d.BillID WHERE r.ksID <> d.ksID OR r.pjID <> d.pjID"),
            "0");
  EXPECT_GT(std::stoll(CountOf(inventory, "出库目录 WHERE pjID > 0")), 100);
  EXPECT_GT(std::stoll(CountOf(inventory, "入库目录 WHERE pjID > 0")), 50);
}

TEST_F(SampleTest, PutsEveryMasterIntoAClassTree) {
  const OpenedInventory inventory(Sample());
  for (const auto& [members, classes] : {std::pair{"商品设置", "商品分类"},
                                         {"厂商资料", "厂商分类"},
                                         {"客户资料", "客户分类"},
                                         {"项目设置", "项目分类"}}) {
    const std::string tree(classes);
    EXPECT_EQ(CountOf(inventory, std::string(members) + " WHERE ClassCode NOT IN (SELECT ClassCode FROM " + tree + ")"),
              "0")
        << tree;
    EXPECT_EQ(CountOf(inventory, tree +
                                     " WHERE length(ClassCode) > 2 AND substr(ClassCode, 1, length(ClassCode) - 2) NOT "
                                     "IN (SELECT ClassCode FROM " +
                                     tree + ")"),
              "0")
        << tree;
    EXPECT_EQ(CountOf(inventory, tree + " WHERE length(ClassCode) NOT IN (2, 4, 6)"), "0") << tree;
  }
}

TEST_F(SampleTest, ShowsTheSizeAsModelAndTheStandardAsStandard) {
  const OpenedInventory inventory(Sample({"--lines", "0"}));
  EXPECT_EQ(inventory.Lines("SELECT 商品名称, 规格, 型号, 计量单位, 计量2 FROM 商品设置 WHERE pdID = 1"),
            Lines{"六角螺栓|M8×30|GB/T 5783|千克|件"});
}

TEST_F(SampleTest, KeepsTheStockMostlyAboveZero) {
  const OpenedInventory inventory(Sample({"--lines", "20000"}));
  const int64_t rows = std::stoll(CountOf(inventory, "仓库余额表"));
  EXPECT_LT(std::stoll(CountOf(inventory, "仓库余额表 WHERE 上期库存数量 < 0")), rows / 50);
}

TEST_F(SampleTest, PutsAllLinesOnOneProductWhenAsked) {
  const OpenedInventory inventory(Sample({"--lines", "20000", "--one-product", "--periods", "24"}));
  EXPECT_EQ(CountOf(inventory, kAllLines + " WHERE pdID = 1"), "20000");
  EXPECT_GT(std::stoll(inventory.One("SELECT count(DISTINCT 单据编号) FROM " + kAllLines)), 15000);
  EXPECT_EQ(inventory.One("SELECT count(DISTINCT AccPeriod) FROM " + kAllLines), "24");
}

TEST_F(SampleTest, RefusesWrongArgumentsInOneLineAndWritesNothing) {
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{"sample"},
                                             {"sample", "-"},
                                             {"sample", PathOf("a.db"), "b.db"},
                                             {"sample", PathOf("a.db"), "--lines", "-1"},
                                             {"sample", PathOf("a.db"), "--periods", "0"},
                                             {"sample", PathOf("a.db"), "--seed", "x"},
                                             {"sample", PathOf("a.db"), "--product", "1"}}) {
    const Outcome outcome = RunArguments(arguments);
    EXPECT_EQ(outcome.code, 2);
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    EXPECT_EQ(outcome.out, "");
  }
  EXPECT_TRUE(Files().empty());
}

TEST_F(SampleTest, RefusesToTakeThePlaceOfAPartOfAnotherInventory) {
  ASSERT_EQ(RunArguments({"sample", PathOf("stock.db"), "--lines", "50"}).code, 0);
  const Outcome outcome = RunArguments({"sample", PathOf("stock.db-journal"), "--lines", "50"});
  EXPECT_EQ(outcome.code, 2);
  EXPECT_NE(outcome.err.find("is a part of the database beside it"), std::string::npos) << outcome.err;
  EXPECT_EQ(Files().size(), 1u);
}

TEST_F(SampleTest, ReportsAPlaceItCannotWriteTo) {
  const Outcome outcome = RunArguments({"sample", PathOf("missing/a.db")});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.err,
            "stockbook sample: Cannot write '" + PathOf("missing/a.db") + "': No such file or directory.\n");
}

}  // namespace
}  // namespace stockbook::app
