// SPDX-License-Identifier: MIT
// Files whose views, columns and indexes call what only the connection may call.
#include <gtest/gtest.h>

#include "databases/database_file.h"
#include "databases/sqlite/database.h"
#include "databases/sqlite/embedded_connection.h"
#include "databases/sqlite/functions.h"

namespace stockbook::testing {
namespace {

using databases::EmbeddedConnection;

// Gives whoever writes the file functions of the connection's names, so that it can be written at all.
void PretendFunctions(DatabaseFile& file) {
  for (const char* name : {"sb_value", "sb_mid", "sb_concat"}) {
    sqlite3_create_function_v2(
        file.handle(), name, -1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
        [](sqlite3_context* context, int, sqlite3_value**) { sqlite3_result_int(context, 1); }, nullptr, nullptr,
        nullptr);
  }
}

std::string ErrorOf(const std::string& connection_string, const std::string& statement) {
  try {
    EmbeddedConnection(connection_string).Execute(statement);
  } catch (const platform::Error& error) {
    EXPECT_FALSE(error.IsOfEngine()) << error.what();
    return error.what();
  }
  return "executed";
}

TEST(HostileSchema, CannotCallTheConnectionsFunctionsFromAView) {
  for (const char* call : {"sb_value(NULL,1)",
                           "sb_value()",
                           "sb_value('')",
                           "sb_value('vvvv',1)",
                           "sb_value(1,1)",
                           "sb_value('x',1)",
                           "sb_value('v',1)",
                           "sb_mid('v','a','b','c')",
                           "sb_mid('vv','a')",
                           "sb_mid(zeroblob(0),'a','b')",
                           "sb_to_text('v',1)",
                           "sb_date_serial('',1,2,3)",
                           "sb_now()",
                           "sb_now('v')",
                           "sb_concat()",
                           "sb_concat(NULL)",
                           "sb_between('vvv',1,2)",
                           "sb_compare(x'7676',1,2)",
                           "sb_like(NULL,NULL,NULL)",
                           "sb_replace('vv','a','b')",
                           "sb_sum(1)",
                           "sb_sum_money('x')",
                           "sb_avg(NULL)",
                           "sb_avg_money(1)"}) {
    DatabaseFile file;
    file.Run(std::string("CREATE VIEW 仓库设置(dpID) AS SELECT ") + call);
    EXPECT_NE(ErrorOf("Data Source=" + file.path(), "SELECT * FROM 仓库设置"), "executed") << call;
    EXPECT_NE(ErrorOf("Data Source=" + file.path(), "SELECT Count(*) FROM 仓库设置 WHERE dpID=1"), "executed") << call;
  }
}

TEST(HostileSchema, CannotCallThemFromColumnsIndexesChecksAndTriggers) {
  DatabaseFile file;
  PretendFunctions(file);
  file.Run("CREATE TABLE 仓库设置(dpID INTEGER, 仓库名称 AS (sb_mid('v', dpID, 'b', 'c')))");
  file.Run("CREATE TABLE 项目设置(项目ID INTEGER); CREATE INDEX i ON 项目设置(sb_value(NULL, 项目ID))");
  file.Run("CREATE TABLE 厂商资料(KSID INTEGER); CREATE INDEX j ON 厂商资料(KSID) WHERE sb_concat(KSID)");
  file.Run("CREATE TABLE 客户资料(KSID INTEGER CHECK(sb_value(NULL, KSID)), x DEFAULT (sb_value(1)))");
  file.Run("CREATE TRIGGER t AFTER INSERT ON 客户资料 BEGIN SELECT sb_value(NULL, 1); END");
  for (const char* table : {"仓库设置", "项目设置", "厂商资料", "客户资料"})
    file.Run(std::string("INSERT INTO ") + table + " DEFAULT VALUES");
  // SQLite refuses a table that calls them, or never calls them while it reads.
  for (const char* statement :
       {"SELECT * FROM 仓库设置", "SELECT * FROM 仓库设置 WHERE 仓库名称='x'", "SELECT * FROM 项目设置 WHERE 项目ID=1",
        "SELECT * FROM 厂商资料 ORDER BY KSID", "SELECT * FROM 客户资料"}) {
    ErrorOf("Data Source=" + file.path(), statement);
  }
}

// Beside the translator, which counts arguments: whoever gets to call a function in some other way.
TEST(ConnectionFunctions, RefuseArgumentsThatTheirFormsDoNotTell) {
  DatabaseFile file;
  const databases::Database database(file.path());
  databases::RegisterFunctions(database);
  const auto runs = [&](const std::string& expression) {
    sqlite3_stmt* prepared = nullptr;
    const bool compiled =
        sqlite3_prepare_v2(database.handle(), ("SELECT " + expression).c_str(), -1, &prepared, nullptr) == SQLITE_OK;
    const bool ran = compiled && sqlite3_step(prepared) == SQLITE_ROW;
    sqlite3_finalize(prepared);
    return ran;
  };
  EXPECT_TRUE(runs("sb_mid('vv', 'abc', 2)"));
  EXPECT_TRUE(runs("sb_concat('vvvvvv', 1, 2, 3, 4, 5, 6)"));
  EXPECT_TRUE(runs("sb_now('')"));
  for (const char* wrong : {"sb_value(NULL,1)",
                            "sb_value(1,1)",
                            "sb_value('',1)",
                            "sb_value('vv',1)",
                            "sb_value(x'76',1)",
                            "sb_value('?',1)",
                            "sb_value('v')",
                            "sb_value('vv',1,2)",
                            "sb_mid('v','a','b','c')",
                            "sb_mid('vvvv','a',1,1,1)",
                            "sb_mid('v','a')",
                            "sb_concat()",
                            "sb_concat(NULL)",
                            "sb_concat('')",
                            "sb_now()",
                            "sb_now('v',1)",
                            "sb_to_text('vvv',1,2,3)",
                            "sb_round('vvv',1,2,3)",
                            "sb_instr('v',1)",
                            "sb_charindex('vvvv',1,2,3,4)",
                            "sb_sum()",
                            "sb_sum(1,2)"}) {
    EXPECT_FALSE(runs(wrong)) << wrong;
  }
}

// Each of the two refusals is enough: that of the functions here, that of the schema in Database.IsOpenedAsPromised.
TEST(ConnectionFunctions, AreRefusedToAViewEvenWhereTheSchemaIsTrusted) {
  for (const char* call : {"sb_value('v',1)", "sb_sum(1)", "sb_sum_money(1)"}) {
    DatabaseFile file;
    file.Run(std::string("CREATE VIEW 仓库设置(dpID) AS SELECT ") + call);
    const databases::Database database(file.path());
    databases::RegisterFunctions(database);
    sqlite3_db_config(database.handle(), SQLITE_DBCONFIG_TRUSTED_SCHEMA, 1, nullptr);
    EXPECT_THROW(databases::Statement(database, "SELECT dpID FROM 仓库设置").Step(), platform::Error) << call;
    EXPECT_TRUE(databases::Statement(database, std::string("SELECT ") + call).Step()) << call;
  }
}

TEST(Database, IsOpenedAsPromised) {
  DatabaseFile file;
  const databases::Database database(file.path());
  const databases::Database::OwnWork own(database);
  databases::Statement query_only(database, "PRAGMA query_only");
  ASSERT_TRUE(query_only.Step());
  EXPECT_EQ(query_only.Integer(0), 1);
  EXPECT_EQ(sqlite3_db_readonly(database.handle(), "main"), 1);
  EXPECT_EQ(sqlite3_limit(database.handle(), SQLITE_LIMIT_ATTACHED, -1), 0);
  EXPECT_EQ(sqlite3_limit(database.handle(), SQLITE_LIMIT_LENGTH, -1), 16 << 20);
  int trusted = 1;
  int defensive = 0;
  sqlite3_db_config(database.handle(), SQLITE_DBCONFIG_TRUSTED_SCHEMA, -1, &trusted);
  sqlite3_db_config(database.handle(), SQLITE_DBCONFIG_DEFENSIVE, -1, &defensive);
  EXPECT_EQ(trusted, 0);
  EXPECT_EQ(defensive, 1);
}

// SQLite asks between its instructions, of which a statement of one call has too few.
TEST(ConnectionFunctions, AskWhetherTheirStatementHasToEnd) {
  DatabaseFile file;
  const databases::Database database(file.path());
  databases::RegisterFunctions(database);
  const databases::Interruption::Running running(database.interruption());
  databases::Statement statement(database, "SELECT sb_len('v', 'abc')");
  database.interruption().Cancel();
  EXPECT_THROW(statement.Step(), platform::Error);
}

TEST(ConnectionFunctions, CountWhatTheyMake) {
  DatabaseFile file;
  const databases::Database database(file.path());
  databases::RegisterFunctions(database);
  const databases::Interruption::Running running(database.interruption());
  EXPECT_TRUE(databases::Statement(database, "SELECT sb_space('v', 65)").Step());
  EXPECT_TRUE(database.interruption().MayMake((size_t{1} << 31) - 65));
  EXPECT_TRUE(databases::Statement(database, "SELECT sb_space('v', 64)").Step()) << "short ones do not count";
  EXPECT_THROW(databases::Statement(database, "SELECT sb_space('v', 65)").Step(), platform::Error);
}

TEST(ConnectionFunctions, MakeNoEndlessTexts) {
  DatabaseFile file;
  std::string text = "Replace(Space(100),' ',Space(8000))";
  EXPECT_EQ(ErrorOf(file.DesktopString(), "SELECT Len(" + text + ") AS n"), "executed");
  for (int level = 1; level < 6; ++level) {
    text = "Replace(" + text + ",' ',Space(8000))";
    EXPECT_TRUE(ErrorOf(file.DesktopString(), "SELECT Len(" + text + ") AS n").starts_with("文本太长")) << level;
  }
  const std::string chain = "Replace(Space(500),' ',Space(8000))";
  EXPECT_TRUE(ErrorOf(file.DesktopString(), "SELECT " + chain + " & " + chain + " AS x").starts_with("文本太长"));
  EXPECT_TRUE(ErrorOf(file.DesktopString(), "SELECT " + chain + "+" + chain + " AS x").starts_with("文本太长"));
  EXPECT_TRUE(ErrorOf(file.ServerString(), "SELECT CONVERT(char(max), 1) AS x").starts_with("文本太长"));
  EXPECT_TRUE(
      ErrorOf(file.DesktopString(), "SELECT Format(0, Replace(Space(8000),' ','00')) AS x").starts_with("格式太长"));
  EXPECT_EQ(ErrorOf(file.DesktopString(), "SELECT " + chain + " & '' AS x"), "executed");
}

TEST(ConnectionFunctions, PassLongTextsOnAndLookForThemInOnePass) {
  DatabaseFile file;
  file.Run("CREATE TABLE 客户资料(企业名称 TEXT); INSERT INTO 客户资料 VALUES (printf('%.*c', 6000000, 'a') || 'b')");
  EmbeddedConnection connection("Data Source=" + file.path());
  const auto result = [&](const std::string& expression) {
    return connection.Execute("SELECT " + expression + " AS x FROM 客户资料").FieldValue("x").Text();
  };
  EXPECT_EQ(result("Len(企业名称 & '')"), "6000001");
  const std::string text = "Right(企业名称, 600001)";
  EXPECT_EQ(result("InStr(" + text + ", Left(企业名称, 300000) & 'b')"), "300001");
  EXPECT_EQ(result("Len(Replace(" + text + ", Left(企业名称, 200000) & 'b', 'c'))"), "400001");
}

}  // namespace
}  // namespace stockbook::testing
