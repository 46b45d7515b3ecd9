// SPDX-License-Identifier: MIT
// Databases behind the driver of SQLite, whose files the embedded engine can read as well: both must tell the same.
#include "stockbook/databases/odbc/odbc_connection.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "databases/database_file.h"
#include "databases/journal_statements.h"
#include "databases/sqlite/embedded_connection.h"
#include "odbc/odbc_drivers.h"
#include "stockbook/platform/error.h"

namespace stockbook::testing {
namespace {

using databases::Dialect;
using databases::EmbeddedConnection;
using databases::OpenOdbc;

std::vector<std::string> RowsOrRefusal(platform::Connection& connection, const std::string& statement) {
  try {
    return ExactRows(connection.Execute(statement));
  } catch (const platform::Error& error) {
    return {error.what()};
  }
}

class OdbcOfSqlite : public ::testing::Test {
 protected:
  void SetUp() override {
    if (SqliteOdbcDriver().empty()) GTEST_SKIP() << "the ODBC driver of SQLite (libsqliteodbc) is not installed";
  }
  std::string Through(Dialect dialect, const std::string& more = "") const {
    return SqliteOdbcString(file_.path(), more) + (dialect == Dialect::kServer ? ";Dialect=SQL;AmpersandJoins=0" : "");
  }
  void ExpectSameAsEmbedded(Dialect dialect, const std::string& statement) {
    EmbeddedConnection embedded(dialect == Dialect::kServer ? file_.ServerString() : file_.DesktopString());
    const auto connection = OpenOdbc(Through(dialect, "Tables=*"));
    EXPECT_EQ(RowsOrRefusal(*connection, statement), RowsOrRefusal(embedded, statement)) << statement;
  }

  DatabaseFile file_;
};

TEST_F(OdbcOfSqlite, GivesTheJournalsOfTheEmbeddedEngine) {
  CreateInventory(file_);
  FillInventory(file_);
  for (const Dialect dialect : {Dialect::kDesktop, Dialect::kServer}) {
    ExpectSameAsEmbedded(dialect, MaterialJournal(dialect, "1)", "2005-12"));
    ExpectSameAsEmbedded(dialect, SupplierJournal(dialect, " Where (Recs.ksID = 5)", "2005-12"));
    ExpectSameAsEmbedded(dialect, CustomerJournal(dialect, " Where (Recs.ksID = 7)", "2005-12"));
    ExpectSameAsEmbedded(dialect, ProjectJournal(dialect, "1 And Dir.pjID = 3", "2005-12"));
  }
}

TEST_F(OdbcOfSqlite, GivesTheBalancesOfTheEmbeddedEngine) {
  CreateInventory(file_);
  FillInventory(file_);
  ExpectSameAsEmbedded(Dialect::kDesktop, DepotBalance("1", "", "2004-12"));
  ExpectSameAsEmbedded(Dialect::kServer, DepotBalance("1", "And bn.DpID=2", "2004-12"));
  ExpectSameAsEmbedded(Dialect::kDesktop, PartnerBalance("tqSuppBalance", "Where bn.ksID=5 And bn.pdID=1", "2005-01"));
  ExpectSameAsEmbedded(Dialect::kDesktop, ProjectBalance("1", "And bn.pjID=3"));
  ExpectSameAsEmbedded(Dialect::kDesktop, "SELECT Max(AccPeriod) FROM tqAccPeriod");
  ExpectSameAsEmbedded(Dialect::kDesktop, "SELECT * FROM tqAccPeriod");
  ExpectSameAsEmbedded(Dialect::kDesktop, "SELECT 商品名称 FROM 商品设置 WHERE pdID=2");
  ExpectSameAsEmbedded(Dialect::kDesktop, "SELECT Count(*) FROM 入库记录");
  ExpectSameAsEmbedded(Dialect::kDesktop, "SELECT 1 AS a");
}

TEST_F(OdbcOfSqlite, KeepsEveryKindOfValue) {
  file_.Run(
      "CREATE TABLE t(k INTEGER PRIMARY KEY, whole INTEGER, number REAL, amount MONEY TEXT, day DATE, words TEXT,"
      " free NUMERIC)");
  file_.Run(
      "INSERT INTO t VALUES(1, 9007199254740993, 0.1+0.2, '922337203685477.5807', '2005-01-05', '螺丝 🔩', 1.1),"
      "(2, NULL, NULL, NULL, NULL, NULL, NULL), (3, -1, 1e300, '-0.0001', '2005-01-06 08:30:00', '', '12.3456'),"
      "(4, 0, 1.0/3, '', '', 'a''b', 2), (5, 'words', 'words', 'words', 'words', 5, 'words')");
  for (const char* columns : {"*", "number", "k, free", "amount, -amount, day"})
    ExpectSameAsEmbedded(Dialect::kDesktop, std::string("SELECT ") + columns + " FROM t ORDER BY k");
}

// More rows than a block has, and texts that have no room in it at first.
TEST_F(OdbcOfSqlite, MakesRoomForLongTexts) {
  file_.Run("CREATE TABLE t(k INTEGER PRIMARY KEY, words TEXT, short VARCHAR(3))");
  file_.Run(
      "WITH RECURSIVE n(k) AS (SELECT 1 UNION ALL SELECT k+1 FROM n WHERE k<3000) INSERT INTO t SELECT k, CASE WHEN "
      "k=2500 THEN replace(hex(zeroblob(40000)), '00', '螺🔩') WHEN k=2000 THEN replace(hex(zeroblob(128)), '0', 'y') "
      "ELSE 'row ' || k END, 'longer than ' || k FROM n");
  ExpectSameAsEmbedded(Dialect::kDesktop, "SELECT * FROM t ORDER BY k");
}

TEST_F(OdbcOfSqlite, GivesNoRowsWhereThereAreNone) {
  file_.Run("CREATE TABLE t(k INTEGER PRIMARY KEY, words TEXT)");
  ExpectSameAsEmbedded(Dialect::kDesktop, "SELECT * FROM t");
  EXPECT_EQ(OpenOdbc(Through(Dialect::kDesktop, "Tables=*"))->Execute("SELECT words, k FROM t").FieldCount(), 2U);
}

TEST_F(OdbcOfSqlite, TellsItsStringWithoutThePassword) {
  const std::string string = Through(Dialect::kDesktop, "PWD={ge;heim};Timeout=9");
  const auto connection = OpenOdbc(string);
  EXPECT_EQ(connection->ConnectionString().find("heim"), std::string::npos);
  EXPECT_NE(connection->ConnectionString().find("Timeout=9"), std::string::npos);
}

std::string OdbcError(platform::Connection& connection, const std::string& statement) {
  try {
    connection.Execute(statement);
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.kind(), platform::ErrorKind::kStatement);
    return error.what();
  }
  return "executed";
}

TEST_F(OdbcOfSqlite, RefusesWhatTheEmbeddedEngineRefuses) {
  CreateInventory(file_);
  file_.Run("CREATE TABLE 用户(口令 TEXT)");
  EmbeddedConnection embedded("Data Source=" + file_.path());
  const auto connection = OpenOdbc(Through(Dialect::kDesktop));
  for (const char* statement :
       {"DELETE FROM 商品设置", "SELECT 1; DELETE FROM 商品设置", "SELECT 口令 FROM 用户", "SELECT x FROM 商品设置",
        "SELECT * FROM 没有", "SELECT * FROM sqlite_master", "SELECT", "",
        "SELECT 商品名称 FROM 商品设置 WHERE 商品名称='x' UNION SELECT 口令 FROM 用户 WHERE '1'='1'"})
    EXPECT_EQ(OdbcError(*connection, statement), OdbcError(embedded, statement)) << statement;
}

TEST_F(OdbcOfSqlite, SeesATableThatWasAddedSince) {
  CreateInventory(file_);
  file_.Run("DROP TABLE tqAccPeriod");
  const auto connection = OpenOdbc(Through(Dialect::kDesktop));
  EXPECT_NE(OdbcError(*connection, "SELECT * FROM tqAccPeriod"), "executed");
  file_.Run("CREATE TABLE tqAccPeriod(AccPeriod TEXT)");
  EXPECT_EQ(OdbcError(*connection, "SELECT * FROM tqAccPeriod"), "executed");
}

TEST_F(OdbcOfSqlite, ReadsSeveralStatementsAsOfOneMoment) {
  CreateInventory(file_);
  FillInventory(file_);
  file_.Run("PRAGMA journal_mode=WAL");
  const auto connection = OpenOdbc(Through(Dialect::kDesktop));
  const std::string count = "SELECT Count(*) FROM 入库记录";
  {
    const auto moment = connection->ReadAsOfOneMoment();
    ASSERT_NE(moment, nullptr);
    file_.Run("DELETE FROM 入库记录 WHERE RecID=100");
    EXPECT_EQ(connection->Execute(count).FieldValue(0).Text(), "5") << "the moment began before";
    const auto inner = connection->ReadAsOfOneMoment();
    EXPECT_EQ(connection->Execute(count).FieldValue(0).Text(), "5");
  }
  EXPECT_EQ(connection->Execute(count).FieldValue(0).Text(), "4");
  file_.Run("DELETE FROM 入库记录 WHERE RecID=101");
  EXPECT_EQ(connection->Execute(count).FieldValue(0).Text(), "3");
}

TEST_F(OdbcOfSqlite, GivesTwoResultsAtOnceThatOutliveTheConnection) {
  CreateInventory(file_);
  FillInventory(file_);
  auto connection = OpenOdbc(Through(Dialect::kDesktop));
  auto products = connection->Execute("SELECT 商品名称 FROM 商品设置 ORDER BY pdID");
  auto depots = connection->Execute("SELECT 仓库名称 FROM 仓库设置 ORDER BY dpID");
  connection.reset();
  EXPECT_EQ(AllRows(std::move(products)), (std::vector<std::string>{"螺丝", "扳手", "锤子"}));
  EXPECT_EQ(AllRows(std::move(depots)), (std::vector<std::string>{"总库", "二库"}));
}

TEST_F(OdbcOfSqlite, EndsAStatementThatTakesTooLong) {
  file_.Run(
      "CREATE TABLE t(k INTEGER); WITH RECURSIVE n(k) AS (SELECT 1 UNION ALL SELECT k+1 FROM n WHERE k<3000)"
      " INSERT INTO t SELECT k FROM n");
  const auto connection = OpenOdbc(Through(Dialect::kDesktop, "Tables=*;Timeout=2"));
  try {
    connection->Execute("SELECT Count(*) FROM t AS a, t AS b, t AS c, t AS d WHERE a.k+b.k+c.k+d.k=0");
    ADD_FAILURE();
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.kind(), platform::ErrorKind::kInterrupted);
    EXPECT_NE(std::string(error.what()).find("时限 2 秒"), std::string::npos) << error.what();
  }
  EXPECT_EQ(connection->Execute("SELECT Count(*) FROM t").FieldValue(0).Text(), "3000");
}

std::string OdbcOpenError(const std::string& connection_string) {
  try {
    OpenOdbc(connection_string);
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.operation(), "Open");
    return error.what();
  }
  return "opened";
}

TEST(OdbcOpening, SaysWhatIsMissing) {
  EXPECT_EQ(OdbcOpenError("Provider=Odbc;Database=x"),
            "连接字符串缺少 Driver 或 DSN，请写明 ODBC 驱动程序“Driver={…}”或数据源“DSN=…”");
  EXPECT_TRUE(OdbcOpenError("Provider=Odbc;DSN=no_such_source").starts_with("找不到 ODBC 数据源或驱动程序"));
  EXPECT_TRUE(OdbcOpenError("Provider=Odbc;Driver={No Such Driver}").starts_with("无法装入 ODBC 驱动程序"));
  EXPECT_TRUE(
      OdbcOpenError("Provider=Odbc;Driver=/no/such/library.so;PWD=geheim").starts_with("无法装入 ODBC 驱动程序"));
}

}  // namespace
}  // namespace stockbook::testing
