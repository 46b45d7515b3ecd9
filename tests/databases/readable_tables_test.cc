// SPDX-License-Identifier: MIT
#include "databases/execution/readable_tables.h"

#include <gtest/gtest.h>

#include "databases/database_file.h"
#include "databases/sqlite/embedded_connection.h"

namespace stockbook::testing {
namespace {

using databases::EmbeddedConnection;
using databases::ReadableTables;

std::string Result(const std::string& connection_string, const std::string& statement) {
  try {
    const auto rows = EmbeddedConnection(connection_string).Execute(statement);
    return RowText(rows);
  } catch (const platform::Error& error) {
    EXPECT_FALSE(error.IsOfEngine()) << error.what();
    return error.what();
  }
}

TEST(ReadableTables, AreThoseOfAJournalAndThoseOfTheList) {
  const ReadableTables journal;
  for (const char* name : {"入库目录", "出库记录", "tqAccPeriod", "TQSUPPBALANCE", "商品设置", "仓库余额表"})
    EXPECT_TRUE(journal.Contains(name)) << name;
  for (const char* name : {"用户", "", "*", "sqlite_master", "SQLITE_schema", "pragma_table_list"})
    EXPECT_FALSE(journal.Contains(name)) << name;
  const ReadableTables more(" 用户 , Notes");
  EXPECT_TRUE(more.Contains("用户"));
  EXPECT_TRUE(more.Contains("notes"));
  EXPECT_TRUE(more.Contains("入库目录"));
  EXPECT_FALSE(more.Contains("其他"));
  EXPECT_TRUE(ReadableTables::All().Contains("其他"));
  EXPECT_FALSE(ReadableTables::All().Contains("sqlite_master"));
}

class Secrets : public ::testing::Test {
 protected:
  Secrets() {
    file_.Run(
        "CREATE TABLE 用户(名称, 口令); INSERT INTO 用户 VALUES ('admin', 'geheim'); CREATE TABLE "
        "仓库设置(dpID INTEGER PRIMARY KEY, 仓库名称 TEXT); INSERT INTO 仓库设置 VALUES (1, '总库')");
  }
  std::string Plain() const { return "Data Source=" + file_.path(); }

  DatabaseFile file_;
};

TEST_F(Secrets, AreNotReadUnlessTheConnectionStringSaysSo) {
  const std::string refusal = "不允许读取表“用户”，它不是库存账的表，连接字符串的 Tables 也没有列出它";
  EXPECT_EQ(Result(Plain(), "SELECT * FROM 用户"), refusal);
  EXPECT_EQ(Result(Plain(), "SELECT 仓库名称 FROM 仓库设置 UNION SELECT 口令 FROM 用户"), refusal);
  EXPECT_EQ(Result(Plain(), "SELECT * FROM 仓库设置 WHERE dpID IN (SELECT Len(口令) FROM 用户)"), refusal);
  EXPECT_EQ(Result(Plain() + ";Tables=其他", "SELECT * FROM 用户"), refusal);
  EXPECT_EQ(Result(Plain() + ";Tables=用户", "SELECT 口令 FROM 用户"), "geheim");
  EXPECT_EQ(Result(Plain() + ";Tables=*", "SELECT 口令 FROM 用户"), "geheim");
}

TEST_F(Secrets, AreRefusedInTheSameWordsWhereThereIsNoSuchTable) {
  file_.Run("DROP TABLE 用户");
  EXPECT_EQ(Result(Plain(), "SELECT * FROM 用户"),
            "不允许读取表“用户”，它不是库存账的表，连接字符串的 Tables 也没有列出它");
}

TEST_F(Secrets, ShowWhereTheFilesOwnViewShowsThem) {
  file_.Run("CREATE VIEW 名册 AS SELECT 名称 FROM 用户; CREATE VIEW 厂商资料(KSID) AS SELECT 名称 FROM 名册");
  EXPECT_EQ(Result(Plain(), "SELECT KSID FROM 厂商资料"), "admin");
  EXPECT_EQ(Result(Plain(), "SELECT Count(*) AS n FROM 厂商资料"), "1");
  file_.Run("CREATE VIEW 客户资料 AS SELECT 7 AS KSID FROM 用户");
  EXPECT_EQ(Result(Plain(), "SELECT KSID FROM 客户资料"), "7");
  EXPECT_NE(Result(Plain(), "SELECT Count(*) FROM 名册").find("不允许读取表"), std::string::npos);
  EXPECT_NE(Result(Plain(), "SELECT 名称 FROM 名册").find("不允许读取表"), std::string::npos);
}

TEST_F(Secrets, OfTheCatalogueShowNowhere) {
  file_.Run(
      "CREATE VIEW 厂商资料 AS SELECT name AS KSID FROM sqlite_master; CREATE VIEW 客户资料 AS SELECT * FROM "
      "pragma_table_info('用户')");
  for (const char* statement :
       {"SELECT * FROM sqlite_master", "SELECT * FROM sqlite_schema", "SELECT KSID FROM 厂商资料",
        "SELECT * FROM 客户资料", "SELECT * FROM sqlite_temp_master", "SELECT * FROM pragma_table_list"}) {
    const std::string result = Result(Plain() + ";Tables=*", statement);
    EXPECT_EQ(result.find("用户"), std::string::npos) << result;
    EXPECT_EQ(result.find("口令"), std::string::npos) << result;
  }
}

TEST_F(Secrets, AreNotMadeUpByAViewOutOfFunctionsOrOfItself) {
  const char* const made[] = {"SELECT value FROM json_each('[1,2]')", "SELECT fullkey FROM json_tree('[1,2]')",
                              "SELECT name FROM pragma_table_list",
                              "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n) SELECT i FROM n LIMIT 3"};
  for (const char* made_up : made) {
    file_.Run(std::string("DROP VIEW IF EXISTS 厂商资料; CREATE VIEW 厂商资料(KSID) AS ") + made_up);
    for (const char* tables : {"", ";Tables=*"}) {
      const std::string result = Result(Plain() + tables, "SELECT KSID FROM 厂商资料");
      EXPECT_GT(result.size(), 20U) << made_up << " gives " << result;
    }
  }
}

// Without the translator: what a statement of SQLite's own language gets.
TEST_F(Secrets, AreRefusedBySqliteAsWell) {
  const databases::Database database(file_.path(), ReadableTables());
  file_.Run("CREATE VIEW 名册 AS SELECT 名称 FROM 用户");
  const auto allowed = [&](const char* sql) {
    sqlite3_stmt* prepared = nullptr;
    const int code = sqlite3_prepare_v2(database.handle(), sql, -1, &prepared, nullptr);
    sqlite3_finalize(prepared);
    return code == SQLITE_OK;
  };
  EXPECT_TRUE(allowed("SELECT 仓库名称 FROM 仓库设置"));
  for (const char* sql : {"SELECT 口令 FROM 用户", "SELECT rowid FROM 用户", "SELECT 名称 FROM 名册",
                          "SELECT 1 FROM (SELECT 名称 FROM 名册)", "SELECT * FROM sqlite_master", "PRAGMA table_list",
                          "BEGIN", "WITH 仓库设置 AS (SELECT 口令 FROM 用户) SELECT 口令 FROM 用户",
                          "DELETE FROM 仓库设置", "ATTACH 'x' AS y", "SELECT * FROM pragma_table_info('用户')"}) {
    EXPECT_FALSE(allowed(sql)) << sql;
  }
}

}  // namespace
}  // namespace stockbook::testing
