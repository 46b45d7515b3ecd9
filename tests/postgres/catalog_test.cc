// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "databases/postgres/postgres_catalog.h"
#include "postgres/session_fixture.h"

namespace stockbook::databases {
namespace {

using Transaction = PostgresSession::Transaction;

class PostgresCatalogs : public PostgresTest {
 protected:
  // The columns of a table with their classes, "" when there is no such table.
  std::string Describe(std::string_view name) {
    const Interruption::Running running(interruption());
    const Transaction transaction(session());
    PostgresCatalog catalog(session());
    catalog.Refresh();
    const TableSchema* table = catalog.FindTable(name);
    if (table == nullptr) return "";
    std::string text = table->name;
    for (const TableColumn& column : table->columns) {
      text += " " + column.name + ":" + std::to_string(static_cast<int>(column.cls));
    }
    return text;
  }
};

TEST_F(PostgresCatalogs, KnowWhatTellsRowsApart) {
  Connect("Tables=*");
  server().Run(
      "CREATE TABLE t (a int, b int, c int, PRIMARY KEY (c, a)); CREATE TABLE u (a int UNIQUE); CREATE VIEW v AS "
      "SELECT * FROM t");
  const Interruption::Running running(interruption());
  const Transaction transaction(session());
  PostgresCatalog catalog(session());
  catalog.Refresh();
  EXPECT_EQ(catalog.FindTable("t")->row_keys, (std::vector<std::string>{"c", "a"}));
  EXPECT_TRUE(catalog.FindTable("t")->plain);
  EXPECT_TRUE(catalog.FindTable("u")->row_keys.empty());
  EXPECT_TRUE(catalog.FindTable("v")->row_keys.empty());
  EXPECT_FALSE(catalog.FindTable("v")->plain);
}

std::string Number(ValueClass cls) { return std::to_string(static_cast<int>(cls)); }

TEST_F(PostgresCatalogs, KnowTheColumnsOfTablesAndViews) {
  Connect("Tables=*");
  server().Run(
      "CREATE DOMAIN amount AS numeric(18, 4); CREATE TABLE t (a int PRIMARY KEY, gone int, \"Q ty\" double "
      "precision, m amount, c varchar(5), d timestamp, w interval); ALTER TABLE t DROP gone; CREATE VIEW v AS "
      "SELECT m, a FROM t");
  EXPECT_EQ(Describe("t"), "t a:" + Number(ValueClass::kInteger) + " Q ty:" + Number(ValueClass::kReal) +
                               " m:" + Number(ValueClass::kMoney) + " c:" + Number(ValueClass::kText) +
                               " d:" + Number(ValueClass::kDate) + " w:" + Number(ValueClass::kAny));
  EXPECT_EQ(Describe("v"), "v m:" + Number(ValueClass::kMoney) + " a:" + Number(ValueClass::kInteger));
  EXPECT_EQ(Describe("pg_class"), "");
}

TEST_F(PostgresCatalogs, FindNamesIgnoringCaseButTheExactOneFirst) {
  server().Run("CREATE TABLE tqaccperiod (a int); CREATE TABLE \"TQACCPERIOD\" (b int); CREATE TABLE 商品资料 (c int)");
  const std::string integer = ":" + Number(ValueClass::kInteger);
  EXPECT_EQ(Describe("tqaccperiod"), "tqaccperiod a" + integer);
  EXPECT_EQ(Describe("TQACCPERIOD"), "TQACCPERIOD b" + integer);
  EXPECT_NE(Describe("tqAccPeriod"), "");
  EXPECT_EQ(Describe("商品资料"), "商品资料 c" + integer);
}

TEST_F(PostgresCatalogs, RefuseOtherTablesInTheSameWords) {
  server().Run("CREATE TABLE wages (a int); CREATE TABLE extra (a int)");
  const auto message = [&](const char* name) { return std::string(ErrorOf([&] { Describe(name); }).what()); };
  EXPECT_EQ(message("wages"), "不允许读取表“wages”，它不是库存账的表，连接字符串的 Tables 也没有列出它");
  EXPECT_EQ(message("nothing"), "不允许读取表“nothing”，它不是库存账的表，连接字符串的 Tables 也没有列出它");
  Connect("Tables=Extra");
  EXPECT_NE(Describe("extra"), "");
}

TEST_F(PostgresCatalogs, SeeTheSchemaOfTheConnectionString) {
  server().Run(
      "DROP SCHEMA IF EXISTS shop CASCADE; CREATE SCHEMA shop; CREATE TABLE shop.商品资料 (a int); "
      "CREATE TABLE 仓库设置 (a int)");
  Connect("Schema=shop");
  EXPECT_NE(Describe("商品资料"), "");
  EXPECT_EQ(Describe("仓库设置"), "");
}

TEST_F(PostgresCatalogs, AreReadAnewInEveryMoment) {
  Connect("Tables=*");
  const Interruption::Running running(interruption());
  PostgresCatalog catalog(session());
  {
    const Transaction transaction(session());
    catalog.Refresh();
    EXPECT_EQ(catalog.FindTable("t"), nullptr);
    server().Run("CREATE TABLE t (a int)");
    catalog.Refresh();
    EXPECT_EQ(catalog.FindTable("t"), nullptr);
  }
  const Transaction transaction(session());
  catalog.Refresh();
  EXPECT_NE(catalog.FindTable("t"), nullptr);
}

TEST(PostgresTypes, AreClassedByTheirNames) {
  EXPECT_EQ(ClassOfPostgresType("double precision"), ValueClass::kReal);
  EXPECT_EQ(ClassOfPostgresType("numeric"), ValueClass::kMoney);
  EXPECT_EQ(ClassOfPostgresType("timestamp with time zone"), ValueClass::kDate);
  EXPECT_EQ(ClassOfPostgresType("character varying"), ValueClass::kText);
  EXPECT_EQ(ClassOfPostgresType("bigint"), ValueClass::kInteger);
  EXPECT_EQ(ClassOfPostgresType("point"), ValueClass::kAny);
  EXPECT_EQ(ClassOfPostgresType("int4range"), ValueClass::kAny);
  EXPECT_EQ(ClassOfPostgresType("integer[]"), ValueClass::kAny);
}

}  // namespace
}  // namespace stockbook::databases
