// SPDX-License-Identifier: MIT
// What the emitters for servers write. That the servers understand it, and mean the same by it, is tested where there
// is a server.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "base/text.h"
#include "databases/dialect/postgres_emitter.h"
#include "databases/dialect/server_emitter.h"
#include "databases/dialect/translation.h"
#include "databases/journal_statements.h"
#include "stockbook/platform/error.h"

namespace stockbook::testing {
namespace {

using databases::Ampersand;
using databases::Dialect;
using databases::Emitter;
using databases::PostgresEmitter;
using databases::ServerEmitter;
using databases::TableSchema;
using databases::Translation;
using databases::ValueClass;

const PostgresEmitter kPostgresEmitter;
const ServerEmitter kServerEmitter;

const std::vector<TableSchema>& SmallSchema() {
  static const std::vector<TableSchema> tables = [] {
    TableSchema a;
    a.name = "a";
    a.columns = {{"k", ValueClass::kInteger},
                 {"q", ValueClass::kReal},
                 {"m", ValueClass::kMoney},
                 {"d", ValueClass::kDate},
                 {"x", ValueClass::kText}};
    a.plain = true;
    a.row_keys = {"k"};
    TableSchema b;
    b.name = "b";
    b.columns = {{"k", ValueClass::kInteger}, {"y", ValueClass::kText}};
    b.plain = true;
    return std::vector<TableSchema>{a, b};
  }();
  return tables;
}

Translation Emitted(std::string_view statement, Dialect dialect, const Emitter& emitter,
                    Ampersand ampersand = Ampersand::kServerRefusesTexts) {
  return databases::Translation(
      statement, {dialect, emitter, ampersand}, [](std::string_view name) -> const TableSchema* {
        const auto found = std::find_if(SmallSchema().begin(), SmallSchema().end(), [&](const TableSchema& table) {
          return base::EqualsIgnoringCase(table.name, name);
        });
        return found == SmallSchema().end() ? nullptr : &*found;
      });
}

std::string InPostgres(std::string_view statement, Dialect dialect = Dialect::kDesktop) {
  return Emitted(statement, dialect, kPostgresEmitter).Whole().sql;
}

std::string InServer(std::string_view statement, Dialect dialect = Dialect::kServer) {
  return Emitted(statement, dialect, kServerEmitter, Ampersand::kJoinsTexts).Whole().sql;
}

TEST(PostgresEmitter, WritesStandardSqlWithEveryConversion) {
  EXPECT_EQ(
      InPostgres("SELECT TOP 2 a.K, -m AS minus, x & a.k, 0 AS Flag FROM a LEFT JOIN [B] ON a.k=b.k WHERE a.k>1 "
                 "AND x='Ab' ORDER BY x DESC"),
      "SELECT t0.\"k\" AS c0, (-t0.\"m\") AS c1, (coalesce(t0.\"x\", '') || coalesce(CAST(t0.\"k\" AS text), "
      "'')) AS c2, 0 AS c3 FROM \"a\" AS t0 LEFT JOIN \"b\" AS t1 ON (t0.\"k\" = t1.\"k\") WHERE (t0.\"k\" > 1) "
      "AND (lower(t0.\"x\" COLLATE \"C\") = 'ab') ORDER BY t0.\"x\" COLLATE \"C\" DESC NULLS LAST, t0.\"k\" NULLS "
      "FIRST LIMIT 2");
}

TEST(PostgresEmitter, ComparesATextWithTheDigitsOfANumberSoThatItsIndexServes) {
  EXPECT_EQ(InPostgres("SELECT k FROM b WHERE y=5"), "SELECT t0.\"k\" AS c0 FROM \"b\" AS t0 WHERE (t0.\"y\" = '5')");
  EXPECT_EQ(InPostgres("SELECT k FROM b WHERE y IN (5, 6) AND k='7'"),
            "SELECT t0.\"k\" AS c0 FROM \"b\" AS t0 WHERE (t0.\"y\" IN ('5', '6')) AND (CAST(t0.\"k\" AS double "
            "precision) = CAST(7 AS double precision))");
}

TEST(PostgresEmitter, PutsGroupsInOrderWhereNobodyAsks) {
  EXPECT_EQ(
      InPostgres("SELECT x, Sum(m), Avg(q) FROM a GROUP BY x"),
      "SELECT t0.\"x\" AS c0, sum(CAST(t0.\"m\" AS numeric)) AS c1, CAST(avg(CAST(t0.\"q\" AS numeric)) AS double "
      "precision) AS c2 FROM \"a\" AS t0 GROUP BY t0.\"x\" ORDER BY t0.\"x\" COLLATE \"C\" NULLS FIRST");
}

TEST(PostgresEmitter, WritesPatternsAsTheServerReadsThem) {
  EXPECT_EQ(InPostgres("SELECT y FROM b WHERE y LIKE 'A_%\\'"),
            "SELECT t0.\"y\" AS c0 FROM \"b\" AS t0 WHERE (lower(t0.\"y\" COLLATE \"C\") LIKE 'a_%\\\\')");
  EXPECT_EQ(InPostgres("SELECT y FROM b WHERE y LIKE '#[!a-c](*'"),
            "SELECT t0.\"y\" AS c0 FROM \"b\" AS t0 WHERE (lower(t0.\"y\" COLLATE \"C\") ~ '^[0-9][^a-c]\\(.*$')");
}

TEST(PostgresEmitter, RefusesWhatHasNoWordsWithItsPlace) {
  for (const char* statement : {"SELECT Replace(x, 'a', 'b') FROM a", "SELECT Format(q, '#,##0.00') FROM a",
                                "SELECT k FROM a WHERE x LIKE x"}) {
    try {
      InPostgres(statement);
      ADD_FAILURE() << statement;
    } catch (const platform::Error& error) {
      EXPECT_NE(std::string(error.what()).find("第 1 行"), std::string::npos) << error.what();
    }
  }
}

TEST(ServerEmitter, WritesTheServersOwnWords) {
  EXPECT_EQ(
      InServer("SELECT TOP 2 a.k, Convert(Char(10),d,23) + x + ' ' FROM a WHERE d >= '2005-03-01' ORDER BY x"),
      "SELECT TOP (2) t0.[k] AS c0, ((CONVERT(nchar(10), t0.[d], 23) + t0.[x]) + N' ') AS c1 FROM [a] AS t0 WHERE "
      "(t0.[d] >= CAST(N'2005-03-01' AS datetime2(0))) ORDER BY t0.[x], t0.[k]");
  EXPECT_EQ(InServer("SELECT AccPeriod FROM (SELECT x AS AccPeriod FROM a) AS [o]]dd] ORDER BY AccPeriod DESC"),
            "SELECT t0.c0 AS c0 FROM (SELECT t1.[x] AS c0 FROM [a] AS t1) AS t0 ORDER BY t0.c0 DESC");
}

TEST(ServerEmitter, JoinsTextsByAmpersandAsTheDesktopDoes) {
  EXPECT_EQ(InServer("SELECT k & '' FROM a"),
            "SELECT (coalesce(CAST(t0.[k] AS nvarchar(4000)), N'') + N'') AS c0 FROM [a] AS t0 ORDER BY t0.[k]");
  EXPECT_THROW(Emitted("SELECT k & '' FROM a", Dialect::kServer, kServerEmitter), platform::Error);
}

TEST(Emitters, PlanJournalsAsArmsWithoutAnyOrder) {
  Translation translation = Emitted("SELECT k, x FROM a ORDER BY d DESC", Dialect::kDesktop, kPostgresEmitter);
  ASSERT_TRUE(translation.plan());
  EXPECT_EQ(translation.plan()->result_columns, 2U);
  ASSERT_EQ(translation.plan()->keys.size(), 2U);
  EXPECT_EQ(translation.plan()->arms[0].sql,
            "SELECT t0.\"k\" AS c0, t0.\"x\" AS c1, t0.\"d\" AS c2, t0.\"k\" AS c3 FROM \"a\" AS t0");
}

}  // namespace
}  // namespace stockbook::testing
