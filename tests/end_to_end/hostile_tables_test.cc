// SPDX-License-Identifier: MIT
// Tables full of values that no clerk would enter. None may cause a crash or a wrong
// number: an unreadable value becomes an empty cell, is shown unchanged, or causes a message.
#include <filesystem>
#include <sstream>

#include "end_to_end/fixture.h"
#include "end_to_end/inventory_maker.h"
#include "end_to_end/journal_comparison.h"
#include "stockbook/command/journal_export.h"

namespace stockbook::end_to_end {
namespace {

constexpr const char* kMost = "'922337203685477.5807'";

class HostileTables : public EndToEnd {
 protected:
  // All types of journals of product 1, over all second keys and over number 1.
  void ExpectAllJournals() {
    const BaseTables tables(database_);
    for (int type = 0; type < 4; ++type) {
      for (const int second : {0, 1})
        EXPECT_TRUE(ShowsWhatTheTablesGive(database_, tables, {type, 1, second, "01", true, true, false}));
    }
  }
  void ExpectRefusal(const app::JournalOptions& options, const std::string& message) {
    const app::LoadReport report = Load(database_, options);
    EXPECT_FALSE(report.loaded) << Describe(options);
    EXPECT_TRUE(app::LoadError(report).starts_with(message)) << Describe(options) << ": " << app::LoadError(report);
    EXPECT_EQ(report.process.back(), -1);
    EXPECT_EQ(desk().sheet().Tag(), "");
    EXPECT_TRUE(desk().sheet().Redraw());
  }
  // The cells that show the stock are empty in all rows.
  void ExpectNoStock() {
    const sheet::GridSheet& grid = desk().sheet();
    for (int row = grid.FixedRows(); row < grid.Rows(); ++row) {
      for (const char* key : {"StoQty", "StoQty2", "StoAcc", "StoPrice"}) {
        const int column = grid.ColIndex(key);
        if (column < 0 || grid.RowOutlineLevel(row) != 1) continue;
        EXPECT_EQ(grid.DisplayText(row, column), "") << row << " " << key;
      }
    }
  }
  std::string Cell(int row, const char* key) {
    const sheet::GridSheet& grid = desk().sheet();
    return grid.TextMatrix(row, grid.ColIndex(key));
  }

  std::string database_ = PathOf("hostile.db");
};

TEST_F(HostileTables, MayHoldNullsEverywhere) {
  {
    InventoryMaker maker(database_, Declared::kWithoutKeys);
    maker.AddMasters();
    for (const char* table :
         {"入库目录", "出库目录", "入库记录", "出库记录", "仓库设置", "厂商资料", "客户资料", "项目设置", "商品设置",
          "仓库余额表", "tqSuppBalance", "tqCustBalance", "tqProjBalance"}) {
      maker.Run(std::string("INSERT INTO ") + table + " DEFAULT VALUES");
    }
    const Literals only_keys{{"数量", "NULL"}, {"dpID", "NULL"}, {"RecID", "NULL"}};
    const Literals no_bill{{"BillDate", "NULL"}, {"单据类型", "NULL"}, {"单据编号", "NULL"},
                           {"dpID", "NULL"},     {"ksID", "NULL"},     {"pjID", "NULL"}};
    maker.AddReceipt(1, "2025-01-05", only_keys, no_bill);
    maker.AddReceipt(2, "2025-01-06", {{"数量", "3"}, {"除税金额", "'4.5'"}});
    maker.AddIssue(3, "2025-01-07", only_keys, no_bill);
    maker.Run(
        "INSERT INTO 仓库余额表(DpID, PdID, AccPeriod) VALUES (1, 1, '2025-01');"
        "INSERT INTO tqSuppBalance(bnPeriod, ksID, pdID) VALUES ('2025-01', 1, 1);"
        "INSERT INTO tqCustBalance(bnPeriod, ksID, pdID) VALUES ('2025-01', 1, 1);"
        "INSERT INTO tqProjBalance(bnPeriod, pjID, pdID) VALUES ('2025-01', 1, 1)");
  }
  ExpectAllJournals();
}

TEST_F(HostileTables, WithANullPeriodOpenAsIfNothingCameBefore) {
  {
    InventoryMaker maker(database_);
    maker.AddMasters();
    maker.Run("INSERT INTO tqAccPeriod VALUES (NULL)");
    maker.AddReceipt(1, "2025-01-05", {{"数量", "3"}});
  }
  const app::LoadReport report = Load(database_, {0, 1, 0, "", false, false, false});
  ASSERT_TRUE(report.loaded) << app::LoadError(report);
  EXPECT_EQ(Cell(1, "StoQty"), "0");
  EXPECT_EQ(Cell(3, "StoQty"), "3");
}

TEST_F(HostileTables, MayHoldTextsWhereNumbersShouldBe) {
  for (const Declared declared : {Declared::kUsual, Declared::kNothing, Declared::kRealMoney}) {
    std::filesystem::remove(database_);
    {
      InventoryMaker maker(database_, declared);
      maker.AddMasters();
      maker.AddReceipt(1, "2025-01-05", {{"数量", "10"}, {"Qty2", "2"}, {"除税金额", "100"}});
      maker.AddReceipt(2, "2025-01-06",
                       {{"数量", "'many'"},
                        {"Qty2", "'12abc'"},
                        {"除税金额", "'much'"},
                        {"除税单价", "'dear'"},
                        {"税率", "'half'"}});
      maker.AddIssue(3, "2025-01-07",
                     {{"数量", "'few'"}, {"Qty2", "'-'"}, {"除税金额", "'1.2.3'"}, {"OtherID", "'x'"}});
      maker.AddIssue(4, "2025-01-08", {{"数量", "4"}, {"除税金额", "40"}});
      maker.Run(
          "INSERT INTO 仓库余额表(DpID, PdID, AccPeriod, 上期库存数量, 上期库存金额) VALUES (1, 1, '2025-01', 'none', "
          "'nothing')");
    }
    ExpectAllJournals();
  }
}

TEST_F(HostileTables, MayHoldDatesThatAreNone) {
  {
    InventoryMaker maker(database_);
    maker.AddMasters();
    int number = 1;
    for (const char* date : {"'2025-13-45'", "'soon'", "20250101", "45000.5", "x'00'", "''", "'2025-02-30'",
                             "'2025-01-05 25:00:00'", "'0000-00-00'", "'2025-01-06'"}) {
      maker.AddReceipt(number++, "2025-01-05", {{"数量", "1"}, {"ProductDate", date}},
                       {{"BillDate", date}, {"录入日期", date}, {"审核日期", date}});
      maker.AddIssue(number++, "2025-01-05", {{"数量", "2"}}, {{"BillDate", date}});
    }
  }
  ExpectAllJournals();
}

TEST_F(HostileTables, ShowNoZeroDates) {
  {
    InventoryMaker maker(database_);
    maker.AddMasters();
    maker.AddReceipt(1, "2025-01-05", {{"数量", "1"}, {"ProductDate", "'1899-12-30'"}},
                     {{"录入日期", "'1899-12-30 00:00:00'"}, {"审核日期", "'1899-12-30'"}});
  }
  ASSERT_TRUE(Load(database_, {0, 1, 0, "", false, false, false}).loaded);
  for (const char* key : {"InputDate", "AuditDate", "Field6"}) EXPECT_EQ(Cell(3, key), "") << key;
}

TEST_F(HostileTables, MayHoldTextsOfAMegabyte) {
  const std::string text = "printf('%.*c', 1048576, 'x')";
  {
    InventoryMaker maker(database_);
    maker.AddMasters();
    maker.Run("UPDATE 厂商资料 SET 企业名称 = " + text + "; UPDATE 商品设置 SET 商品名称 = " + text +
              ", 规格 = " + text);
    maker.AddReceipt(1, "2025-01-05", {{"数量", "5"}, {"经手人", text}, {"SerialNo", text}},
                     {{"单据编号", text}, {"说明", text}, {"审核员", text}});
    maker.AddIssue(2, "2025-01-05", {{"数量", text}, {"除税金额", text}}, {{"单据类型", text}});
  }
  const BaseTables tables(database_);
  for (int type = 0; type < 4; ++type)
    EXPECT_TRUE(ShowsWhatTheTablesGive(database_, tables, {type, 1, 1, "", false, false, false}));
}

TEST_F(HostileTables, MayHoldPeriodsThatAreNone) {
  {
    InventoryMaker maker(database_);
    maker.AddMasters();
    int number = 1;
    for (const char* period : {"''", "'1'", "'2025'", "' '", "'2025-01-01-01'", "7", "1.5"})
      maker.AddReceipt(number++, "2025-01-05", {{"数量", "1"}}, {{"AccPeriod", period}});
  }
  ExpectAllJournals();
}

TEST_F(HostileTables, MayHoldNulsAndMalformedUtf8) {
  {
    InventoryMaker maker(database_);
    maker.AddMasters();
    maker.AddReceipt(1, "2025-01-05",
                     {{"数量", "5"},
                      {"经手人", "CAST(x'41FF42' AS TEXT)"},
                      {"交接人", "CAST(x'410042' AS TEXT)"},
                      {"包装", "x'EDA080'"},
                      {"货位", "CAST(x'220A5C09' AS TEXT)"}},
                     {{"单据编号", "CAST(x'C0AF' AS TEXT)"},
                      {"说明", "CAST(x'00' AS TEXT)"},
                      {"AccPeriod", "CAST(x'323032352D3031FF' AS TEXT)"}});
    maker.Run("UPDATE 商品设置 SET 商品名称 = CAST(x'FE00' AS TEXT)");
  }
  const app::JournalOptions options{0, 1, 0, "", false, false, false};
  const app::LoadReport report = Load(database_, options);
  ASSERT_TRUE(report.loaded) << app::LoadError(report);
  std::ostringstream text;
  app::WriteNdjson(desk().sheet(), app::ExportColumns::kAll, desk().control().Caption(), report, text);
  const ShownJournal shown = FromNdjson(text.str());  // every line is valid JSON, so no malformed text got through
  ASSERT_EQ(shown.rows.size(), 4U);
  const Cells& line = shown.rows[2].text;
  EXPECT_EQ(line[PlaceOf("Field0")],
            "A\xEF\xBF\xBD"
            "B");
  EXPECT_EQ(line[PlaceOf("Field1")],
            "A\xEF\xBF\xBD"
            "B");
  EXPECT_EQ(line[PlaceOf("Field3")], "\"\n\\\t");
  EXPECT_EQ(line[PlaceOf("StoQty")], "5");
}

TEST_F(HostileTables, MayHoldTheLargestAmounts) {
  {
    InventoryMaker maker(database_);
    maker.AddMasters();
    maker.AddReceipt(1, "2025-01-05", {{"数量", "2"}, {"除税金额", kMost}});
    maker.AddIssue(2, "2025-01-06", {{"数量", "1"}, {"除税金额", kMost}});
    maker.AddIssue(3, "2025-01-07", {{"数量", "1"}, {"除税金额", "'0.0001'"}}, {{"AccPeriod", "'2025-02'"}});
  }
  const BaseTables tables(database_);
  // The issues alone add up to more than Money can hold.
  EXPECT_TRUE(ShowsWhatTheTablesGive(database_, tables, {1, 1, 1, "", false, false, false}));
  ExpectRefusal({0, 1, 0, "", false, false, false}, "金额超出范围");
  ExpectRefusal({2, 1, 1, "", false, false, false}, "金额超出范围");
}

TEST_F(HostileTables, WhoseStockOverflowsShowNoStockAtAll) {
  {
    InventoryMaker maker(database_);
    maker.AddMasters();
    maker.AddReceipt(1, "2025-01-05", {{"数量", "2"}, {"除税金额", kMost}});
    maker.AddReceipt(2, "2025-01-06", {{"数量", "3"}, {"除税金额", "'0.0001'"}});
  }
  for (int type : {0, 1, 3}) {
    ExpectRefusal({type, 1, 1, "", true, true, false}, "金额超出范围");
    ExpectNoStock();
  }
}

TEST_F(HostileTables, WhoseStockOverflowsKeepRestrictedAmountsHidden) {
  {
    InventoryMaker maker(database_);
    maker.AddMasters();
    maker.AddReceipt(1, "2025-01-05", {{"数量", "2"}, {"除税单价", "77"}, {"除税金额", kMost}});
    maker.AddReceipt(2, "2025-01-06", {{"数量", "3"}, {"除税单价", "77"}, {"除税金额", "'77'"}});
  }
  ExpectRefusal({0, 1, 1, "", true, true, true}, "金额超出范围");
  const sheet::GridSheet& grid = desk().sheet();
  for (int row = grid.FixedRows(); row < grid.Rows(); ++row) {
    for (const char* key : {"Price", "Account", "RevAcc", "IssAcc", "StoPrice", "StoAcc"}) {
      const int column = grid.ColIndex(key);
      const std::string text = column < 0 ? "" : grid.DisplayText(row, column);
      EXPECT_TRUE(grid.RowOutlineLevel(row) != 1 || text.empty() || text == "-") << row << " " << key << " " << text;
    }
  }
}

TEST_F(HostileTables, WithAnAmountThatHasNoNegativeAreRefused) {
  {
    InventoryMaker maker(database_);
    maker.AddMasters();
    maker.AddIssue(1, "2025-01-05", {{"数量", "2"}, {"除税金额", "'-922337203685477.5808'"}});
  }
  for (int type : {0, 2, 3}) ExpectRefusal({type, 1, 1, "", false, false, false}, "金额超出范围");
}

TEST_F(HostileTables, WithAnAmountBeyondMoneyAreRefused) {
  for (const char* amount : {"'99999999999999999999'", "1e30", "'-922337203685477.5809'"}) {
    for (const Declared declared : {Declared::kUsual, Declared::kRealMoney, Declared::kNothing}) {
      std::filesystem::remove(database_);
      {
        InventoryMaker maker(database_, declared);
        maker.AddMasters();
        maker.AddReceipt(1, "2025-01-05", {{"数量", "2"}, {"除税金额", amount}});
        maker.AddReceipt(2, "2025-01-06", {{"数量", "2"}, {"除税金额", "5"}});
      }
      SCOPED_TRACE(std::string(amount) + " declared " + std::to_string(static_cast<int>(declared)));
      ExpectRefusal({0, 1, 1, "", false, false, false}, "金额超出范围");
    }
  }
}

TEST_F(HostileTables, WhoseOpeningAmountOverflowsOpenWithZerosAndSaySo) {
  {
    InventoryMaker maker(database_);
    maker.AddMasters();
    maker.AddReceipt(1, "2025-01-05", {{"数量", "2"}, {"除税金额", "5"}});
    for (int depot = 1; depot <= 2; ++depot) {
      maker.Insert("仓库余额表", {{"DpID", std::to_string(depot)},
                                  {"PdID", "1"},
                                  {"AccPeriod", "'2025-01'"},
                                  {"上期库存数量", "1"},
                                  {"上期库存金额", kMost}});
    }
  }
  const app::LoadReport report = Load(database_, {0, 1, 0, "", false, false, false});
  ASSERT_TRUE(report.loaded);
  EXPECT_EQ(Cell(1, "BillNo"), "2025年01月期初");
  EXPECT_EQ(Cell(1, "StoAcc"), "0");
  EXPECT_EQ(app::LoadProblems(report).size(), 1U);
  ASSERT_TRUE(Load(database_, {0, 1, 2, "", false, false, false}).loaded);
  EXPECT_EQ(Cell(1, "StoAcc"), "922337203685477.5807");
}

TEST_F(HostileTables, WithAnInfiniteAmountAreRefusedWhateverTheirColumnsDeclare) {
  for (const Declared declared : {Declared::kNumericMoney, Declared::kRealMoney, Declared::kNothing}) {
    {
      InventoryMaker maker(database_, declared);
      maker.AddMasters();
      maker.AddReceipt(1, "2025-01-05", {{"数量", "1"}, {"除税金额", "9e999"}});
    }
    const app::LoadReport report = Load(database_, {0, 1, 0, "", false, false, false});
    EXPECT_FALSE(report.loaded) << static_cast<int>(declared);
    EXPECT_TRUE(app::LoadError(report).starts_with("金额超出范围")) << app::LoadError(report);
    std::filesystem::remove(database_);
  }
}

TEST_F(HostileTables, WhoseOnlyLineHasAnInfiniteQuantityShowNoStockAndSaySo) {
  {
    InventoryMaker maker(database_);
    maker.AddMasters();
    maker.AddReceipt(1, "2025-01-05", {{"数量", "9e999"}, {"除税金额", "1"}});
  }
  const app::LoadReport report = Load(database_, {0, 1, 0, "", false, false, false});
  ASSERT_TRUE(report.loaded);
  EXPECT_EQ(Cell(3, "StoQty"), "");
  EXPECT_EQ(app::LoadProblems(report).size(), 1U);
}

TEST_F(HostileTables, MayHoldQuantitiesWithoutEnd) {
  {
    InventoryMaker maker(database_);
    maker.AddMasters();
    maker.AddReceipt(1, "2025-01-05", {{"数量", "1e308"}, {"除税金额", "1"}});
    maker.AddReceipt(2, "2025-01-06", {{"数量", "1e308"}, {"除税金额", "1"}});
    maker.AddReceipt(3, "2025-01-07", {{"数量", "9e999"}, {"除税金额", "1"}});
    maker.AddIssue(4, "2025-01-08", {{"数量", "9e999"}, {"除税金额", "1"}});
    maker.AddReceipt(5, "2025-01-09", {{"数量", "5e-324"}, {"除税金额", "1"}});
  }
  ASSERT_TRUE(Load(database_, {0, 1, 0, "", false, false, false}).loaded);
  EXPECT_EQ(Cell(3, "StoQty"), "1E+308");
  for (int row = 4; row <= 7; ++row) {
    EXPECT_EQ(Cell(row, "StoQty"), "") << row;
    EXPECT_EQ(Cell(row, "StoPrice"), "0") << row;
  }
  EXPECT_EQ(Cell(7, "StoAcc"), "3");
}

TEST_F(HostileTables, MayHoldNothing) {
  { InventoryMaker maker(database_); }
  for (int type : {0, 3}) {
    const app::LoadReport report = Load(database_, {type, 1, 0, "", false, false, false});
    EXPECT_TRUE(report.loaded) << app::LoadError(report);
    EXPECT_EQ(desk().sheet().Rows(), desk().sheet().FixedRows() + 1);
    EXPECT_EQ(Cell(1, "BillNo"), "期初");
  }
  for (int type : {1, 2}) EXPECT_FALSE(Load(database_, {type, 1, 0, "", false, false, false}).loaded);
}

TEST_F(HostileTables, MayHoldOneLineOrLinesOfThreeHundredPeriods) {
  for (const int periods : {0, 1, 300}) {
    std::filesystem::remove(database_);
    {
      InventoryMaker maker(database_);
      maker.AddMasters();
      maker.Run("DELETE FROM tqAccPeriod; INSERT INTO tqAccPeriod VALUES ('1990-01'), ('2099-12')");
      for (int month = 0; month < periods; ++month) {
        const std::string date =
            std::to_string(2000 + month / 12) + (month % 12 < 9 ? "-0" : "-") + std::to_string(month % 12 + 1) + "-15";
        maker.AddReceipt(month + 1, date, {{"数量", "0.1"}, {"Qty2", "1"}, {"除税金额", "'0.0003'"}});
        maker.AddIssue(month + 1, date, {{"数量", "0.07"}, {"除税金额", "'0.0001'"}});
      }
    }
    ExpectAllJournals();
  }
}

TEST_F(HostileTables, MayRepeatTheKeysOfTheirMasters) {
  {
    InventoryMaker maker(database_, Declared::kWithoutKeys);
    maker.AddMasters();
    maker.AddMasters();
    maker.Run(
        "INSERT INTO 仓库设置(dpID, 仓库名称) VALUES (1, '分库');"
        "INSERT INTO 商品设置(pdID, 商品名称) VALUES (1, '螺母')");
    for (int copy = 0; copy < 2; ++copy) {
      maker.AddReceipt(1, "2025-01-05", {{"数量", "3"}, {"除税金额", "10"}});
      maker.AddIssue(2, "2025-01-06", {{"数量", "1"}, {"除税金额", "3"}});
    }
  }
  ExpectAllJournals();
}

TEST_F(HostileTables, WithAPartnerWithoutKeyLeaveItOutAndSaySo) {
  {
    InventoryMaker maker(database_, Declared::kWithoutKeys);
    maker.AddMasters();
    maker.Run("INSERT INTO 厂商资料(KSID, 企业名称, ClassCode) VALUES (NULL, '无', '01')");
    maker.AddReceipt(1, "2025-01-05", {{"数量", "3"}});
  }
  const app::LoadReport report = Load(database_, {1, 1, 0, "01", false, false, false});
  EXPECT_TRUE(report.loaded) << app::LoadError(report);
  EXPECT_NE(app::LoadProblems(report), std::vector<std::string>());
}

}  // namespace
}  // namespace stockbook::end_to_end
