// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "databases/connection_string.h"
#include "databases/dialect/dialect.h"
#include "platform/error.h"

namespace stockbook::databases {
namespace {

TEST(ConnectionString, FindsSettingsIgnoringTheCaseOfTheirNames) {
  const ConnectionString settings("Provider=Stockbook.Embedded; data SOURCE = /a b/c.db ;;Dialect=SQL;");
  EXPECT_EQ(settings.Find("Data Source"), "/a b/c.db");
  EXPECT_EQ(settings.Find("provider"), "Stockbook.Embedded");
  EXPECT_EQ(settings.Find("Password"), std::nullopt);
}

TEST(ConnectionString, TakesTheLastOfSeveral) { EXPECT_EQ(ConnectionString("a=1;A=2").Find("a"), "2"); }

TEST(ConnectionString, ReadsQuotedValues) {
  const ConnectionString settings(R"(a="x;y ""z""" ; b='it''s' ;d=plain "quote")");
  EXPECT_EQ(settings.Find("a"), "x;y \"z\"");
  EXPECT_EQ(settings.Find("b"), "it's");
}

TEST(ConnectionString, KeepsEmptyValuesAndValuesWithEqualsSigns) {
  const ConnectionString settings("a=;b=c=d");
  EXPECT_EQ(settings.Find("a"), "");
  EXPECT_EQ(settings.Find("b"), "c=d");
}

TEST(ConnectionString, NamesThePlaceOfWhatItCannotRead) {
  for (const char* text : {"nonsense", "a=1;b;c=2", "=x", "a=\"open", "a=\"x\"y;b=1"}) {
    try {
      ConnectionString settings(text);
      ADD_FAILURE() << text;
    } catch (const platform::Error& error) {
      EXPECT_NE(std::string(error.what()).find("连接字符串第 "), std::string::npos) << text;
    }
  }
}

TEST(DialectOf, IsTheServersWhereSqlStandsAnywhereInCapitals) {
  EXPECT_EQ(DialectOf("Provider=Stockbook.Embedded;Data Source=a.db"), Dialect::kDesktop);
  EXPECT_EQ(DialectOf("Provider=Stockbook.Embedded;Dialect=SQL;Data Source=a.db"), Dialect::kServer);
  EXPECT_EQ(DialectOf("Provider=Stockbook.Embedded;Dialect=sql;Data Source=a.db"), Dialect::kDesktop);
  EXPECT_EQ(DialectOf("Provider=Stockbook.Embedded;Data Source=mySQLfile.db"), Dialect::kServer);
}

}  // namespace
}  // namespace stockbook::databases
