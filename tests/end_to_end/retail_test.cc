// SPDX-License-Identifier: MIT
// The real invoice lines kept beside the sources, if they are there.
#include <sqlite3.h>

#include <filesystem>
#include <sstream>

#include "end_to_end/fixture.h"
#include "end_to_end/journal_comparison.h"
#include "stockbook/command/import_command.h"

namespace stockbook::end_to_end {
namespace {

const std::string kTable = std::string(STOCKBOOK_SOURCE_DIR) + "/../shared/data/online-retail-2010-12_2011-06.csv.xz";

class Retail : public EndToEnd {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(kTable)) GTEST_SKIP() << "The table of invoice lines is not here: " << kTable;
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    app::Terminal terminal{in, out, err};
    const int code = app::ImportCommand().run(
        {kTable, "-o", database_, "--map",
         "product=StockCode,name=Description,bill=InvoiceNo,date=InvoiceDate,quantity=Quantity,"
         "price=UnitPrice,partner=CustomerID,project=Country",
         "--direction", "issue"},
        terminal);
    ASSERT_EQ(code, 0) << err.str();
  }

  int32_t One(const std::string& sql) const {
    sqlite3* database = nullptr;
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(sqlite3_open_v2(database_.c_str(), &database, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
    EXPECT_EQ(sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database);
    EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW);
    const int32_t number = sqlite3_column_int(statement, 0);
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return number;
  }

  // The tables; lines and balances only if they meet the condition on the column.
  BaseTables TablesWhere(const std::string& column, int32_t key) const {
    const std::string condition = column + " = " + std::to_string(key);
    std::map<std::string, std::string> conditions{
        {"入库记录", condition}, {"出库记录", condition}, {"tqSuppBalance", condition}, {"tqCustBalance", condition}};
    conditions["仓库余额表"] = conditions["tqProjBalance"] = column == "pdID" ? condition : "0";
    return BaseTables(database_, conditions);
  }

  std::string database_ = PathOf("retail.db");
};

TEST_F(Retail, ShowsItsJournalsRight) {
  // Best-selling: by pieces, and by lines.
  for (const char* most : {"sum(数量)", "count(*)"}) {
    const int32_t product =
        One(std::string("SELECT pdID FROM 出库记录 GROUP BY pdID ORDER BY ") + most + " DESC LIMIT 1");
    const BaseTables tables = TablesWhere("pdID", product);
    EXPECT_TRUE(ShowsWhatTheTablesGive(database_, tables, {0, product, 0, "", false, false, false}));
    EXPECT_TRUE(ShowsWhatTheTablesGive(database_, tables, {3, product, 1, "", false, false, false}));
    EXPECT_TRUE(ShowsWhatTheTablesGive(database_, tables, {3, product, 0, "", false, false, false}));
  }
  EXPECT_GT(desk().sheet().Rows(), 1000);
  const int32_t customer =
      One("SELECT ksID FROM 出库记录 JOIN 客户资料 USING (KSID) WHERE 企业名称 <> '(无客户)' GROUP BY ksID ORDER BY "
          "count(*) DESC LIMIT 1");
  EXPECT_TRUE(
      ShowsWhatTheTablesGive(database_, TablesWhere("ksID", customer), {2, 0, customer, "", false, false, false}));
  EXPECT_GT(desk().sheet().Rows(), 1000);
}

}  // namespace
}  // namespace stockbook::end_to_end
