// SPDX-License-Identifier: MIT
#include "databases/dialect/translation.h"
#include "databases/dialect/sqlite_emitter.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/text.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

const databases::SqliteEmitter kTranslationEmitter;

TEST(Translation, OfAJournalIsReadableSql) {
  const std::vector<TableSchema> tables = {
      {"a",
       {{"k", ValueClass::kInteger}, {"m", ValueClass::kMoney}, {"d", ValueClass::kDate}, {"x", ValueClass::kText}},
       "_rowid_"},
      {"b", {{"k", ValueClass::kInteger}, {"y", ValueClass::kText}}, "_rowid_"},
  };
  const auto find_table = [&](std::string_view name) -> const TableSchema* {
    const auto found = std::find_if(tables.begin(), tables.end(), [&](const TableSchema& table) {
      return base::EqualsIgnoringCase(table.name, name);
    });
    return found == tables.end() ? nullptr : &*found;
  };
  const auto translated = [&](std::string_view statement, Dialect dialect) {
    return databases::Translation(statement, {dialect, kTranslationEmitter}, find_table).Whole().sql;
  };
  EXPECT_EQ(translated("SELECT TOP 2 A.k, -m AS minus, d & ' ' & Left(x, 2), 0 AS Flag FROM a LEFT JOIN [B] AS "
                       "bb ON a.k=bb.k WHERE a.k>1 And Left(y,1)='z' ORDER BY d, minus DESC",
                       Dialect::kDesktop),
            "SELECT t0.\"k\" AS c0, sb_negate_money('M', t0.\"m\") AS c1, sb_concat('Dvv', t0.\"d\", ' ', "
            "sb_left('vv', t0.\"x\", 2)) AS c2, 0 AS c3 "
            "FROM \"a\" AS t0 LEFT JOIN \"b\" AS t1 ON (t0.\"k\" = t1.\"k\") WHERE (t0.\"k\" > 1) AND (sb_left('vv', "
            "t1.\"y\", 1) COLLATE sb_text = 'z') "
            "ORDER BY sb_value('D', t0.\"d\"), 2 DESC, t0._rowid_, t1._rowid_ LIMIT 2");
  EXPECT_EQ(translated("SELECT m FROM a UNION SELECT 0 FROM b UNION ALL SELECT y FROM b ORDER BY m", Dialect::kDesktop),
            "SELECT sb_text('m', sb_value('M', t0.\"m\")) AS c0 FROM \"a\" AS t0 UNION SELECT 0 AS c0 FROM \"b\" AS t1 "
            "UNION ALL SELECT t2.\"y\" AS c0 FROM \"b\" AS t2 ORDER BY 1");
  EXPECT_EQ(
      translated("SELECT Convert(Char(10),d,23) + x, Sum(m) FROM a GROUP BY d, x HAVING Count(*)>1", Dialect::kServer),
      "SELECT sb_plus_server('vv', sb_to_text('Dvvv', t0.\"d\", 10, 1, 23), t0.\"x\") AS c0, "
      "sb_sum_money(sb_value('M', t0.\"m\")) AS c1 "
      "FROM \"a\" AS t0 GROUP BY sb_value('D', t0.\"d\"), t0.\"x\" HAVING (count(*) > 1)");
}

std::string TranslatedOrRefused(const std::string& statement) {
  const TableSchema table{"a", {{"k", ValueClass::kInteger}}, "_rowid_"};
  try {
    databases::Translation(statement, {Dialect::kServer, kTranslationEmitter},
                           [&](std::string_view) { return &table; });
  } catch (const platform::Error& error) {
    return error.what();
  }
  return "translated";
}

// Written out, each level would be twice as long as the one in it.
TEST(Translation, RefusesWhatDoublesWithEveryLevel) {
  std::string columns = "a";
  std::string cases = "k";
  std::string nulls = "k";
  for (int level = 0; level < 40; ++level) {
    if (level < 20) columns = "(SELECT *, * FROM " + columns + " AS t)";
    cases = "CASE " + cases + " WHEN 1 THEN 1 WHEN 2 THEN 2 ELSE 3 END";
    nulls = "NULLIF(" + nulls + ",1)";
  }
  EXPECT_TRUE(TranslatedOrRefused("SELECT * FROM " + columns + " AS t").starts_with("结果的字段太多，最多 2000 个"));
  EXPECT_TRUE(TranslatedOrRefused("SELECT " + cases + " AS x FROM a").starts_with("CASE 展开后太长"));
  EXPECT_TRUE(TranslatedOrRefused("SELECT " + nulls + " AS x FROM a").starts_with("NULLIF 展开后太长"));
  EXPECT_EQ(TranslatedOrRefused(
                "SELECT CASE CASE k WHEN 1 THEN 2 END WHEN 2 THEN NULLIF(NULLIF(k,1),2) END AS x, *, * FROM a"),
            "translated");
}

}  // namespace
}  // namespace stockbook::databases
