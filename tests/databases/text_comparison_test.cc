// SPDX-License-Identifier: MIT
// Texts compare without minding the case of ASCII letters, as `like` does, by every plan and in both dialects.
#include <gtest/gtest.h>

#include "databases/journal_statements.h"
#include "databases/plain_query.h"

namespace stockbook::testing {
namespace {

using databases::Dialect;

class TextComparison : public ::testing::Test {
 protected:
  TextComparison() {
    file_.Run(R"(
      CREATE TABLE 厂商资料(KSID INTEGER PRIMARY KEY, 企业名称 TEXT, ClassCode TEXT);
      CREATE TABLE 客户资料(KSID TEXT PRIMARY KEY, 企业名称 TEXT, ClassCode);
      CREATE TABLE plain(k INTEGER, code, amount MONEY TEXT);
      INSERT INTO 厂商资料 VALUES (1, 'x', 'ab1'), (2, 'y', 'AB2'), (3, 'z', 'Ab'), (4, 'u', 'b'), (5, NULL, NULL),
        (6, '_', 'a_'), (7, 'é', 'É');
      INSERT INTO 客户资料 VALUES ('k1', 'X', 'AB'), ('K2', 'Y', 'ab'), ('3', 'Z', 5), ('4', 'v', CAST(x'610041' AS TEXT));
      INSERT INTO plain VALUES (1, 'K1', 'None'), (2, 'k2', 'NONE'), (3, 3, '1'), (4, CAST(x'410042' AS TEXT), 'none!');
    )");
  }

  // The first column of the result, by every plan, in both dialects.
  std::string Found(const std::string& statement) {
    const std::string desktop = Joined(RowsOfEveryPlan(file_.DesktopString(), statement));
    EXPECT_EQ(Joined(RowsOfEveryPlan(file_.ServerString(), statement)), desktop) << statement;
    return desktop;
  }
  static std::string Joined(const std::vector<std::string>& rows) {
    std::string text;
    for (const std::string& row : rows) text += (text.empty() ? "" : " ") + row;
    return text;
  }

  DatabaseFile file_;
};

TEST_F(TextComparison, OfEqualityIgnoresCase) {
  EXPECT_EQ(Found("SELECT KSID FROM 厂商资料 WHERE ClassCode='aB1' ORDER BY KSID"), "1");
  EXPECT_EQ(Found("SELECT KSID FROM 厂商资料 WHERE Left(ClassCode,2) = 'ab' ORDER BY KSID"), "1 2 3");
  EXPECT_EQ(Found("SELECT KSID FROM 厂商资料 WHERE ClassCode like 'ab%' ORDER BY KSID"), "1 2 3");
  EXPECT_EQ(Found("SELECT KSID FROM 厂商资料 WHERE ClassCode<>'AB' ORDER BY KSID"), "1 2 4 6 7");
  EXPECT_EQ(Found("SELECT KSID FROM 厂商资料 WHERE 企业名称='É' ORDER BY KSID"), "");
  EXPECT_EQ(Found("SELECT KSID FROM 客户资料 WHERE ClassCode='Ab' ORDER BY KSID"), "K2 k1");
}

TEST_F(TextComparison, OfOrderIgnoresCaseAsEqualityDoes) {
  EXPECT_EQ(Found("SELECT KSID FROM 厂商资料 WHERE ClassCode<='AB' ORDER BY KSID"), "3 6");
  EXPECT_EQ(Found("SELECT KSID FROM 厂商资料 WHERE ClassCode>='B' ORDER BY KSID"), "4 7");
  // Between the alphabets: "_" comes before every letter.
  EXPECT_EQ(Found("SELECT KSID FROM 厂商资料 WHERE ClassCode<'a_' ORDER BY KSID"), "");
  EXPECT_EQ(Found("SELECT KSID FROM 厂商资料 WHERE ClassCode BETWEEN 'AB' AND 'aB1' ORDER BY KSID"), "1 3");
}

TEST_F(TextComparison, OfListsIgnoresCase) {
  EXPECT_EQ(Found("SELECT KSID FROM 厂商资料 WHERE ClassCode IN ('aB','B') ORDER BY KSID"), "3 4");
  EXPECT_EQ(Found("SELECT KSID FROM 厂商资料 WHERE ClassCode NOT IN ('aB','B') ORDER BY KSID"), "1 2 6 7");
  EXPECT_EQ(Found("SELECT KSID FROM 厂商资料 WHERE ClassCode IN (SELECT ClassCode FROM 客户资料) ORDER BY KSID"), "3");
  EXPECT_EQ(Found("SELECT k FROM plain WHERE code IN ('k1', 3) ORDER BY k"), "1 3");
}

TEST_F(TextComparison, OfJoinsIgnoresCase) {
  EXPECT_EQ(Found("SELECT p.k, c.企业名称 FROM plain AS p INNER JOIN 客户资料 AS c ON p.code = c.KSID ORDER BY p.k"),
            "1|X 2|Y");
  EXPECT_EQ(Found("SELECT s.KSID, c.KSID FROM 厂商资料 AS s LEFT JOIN 客户资料 AS c ON s.企业名称 = c.企业名称 "
                  "ORDER BY s.KSID"),
            "1|k1 2|K2 3|3 4|~ 5|~ 6|~ 7|~");
}

TEST_F(TextComparison, OfValuesInCasesIgnoresCase) {
  EXPECT_EQ(Joined(RowsOfEveryPlan(
                file_.ServerString(),
                "SELECT CASE ClassCode WHEN 'AB' THEN 1 ELSE 0 END FROM 厂商资料 WHERE KSID<=3 ORDER BY KSID")),
            "0 0 1");
}

TEST_F(TextComparison, OfTextsInAmountsIgnoresCase) {
  EXPECT_EQ(Found("SELECT k FROM plain WHERE amount='none' ORDER BY k"), "1 2");
}

// SQLite's own way to ignore case ends at a NUL.
TEST_F(TextComparison, GoesOnBehindANul) {
  EXPECT_EQ(Found("SELECT p.k FROM plain AS p INNER JOIN 客户资料 AS c ON p.code = c.ClassCode ORDER BY p.k"), "");
  file_.Run("INSERT INTO 客户资料 VALUES ('5', 'n', CAST(x'610062' AS TEXT))");
  EXPECT_EQ(Found("SELECT p.k FROM plain AS p INNER JOIN 客户资料 AS c ON p.code = c.ClassCode ORDER BY p.k"), "4");
}

TEST_F(TextComparison, LeavesOrderAndDuplicatesToTheBytes) {
  EXPECT_EQ(Found("SELECT DISTINCT ClassCode FROM 厂商资料 WHERE KSID<=3 ORDER BY ClassCode"), "AB2 Ab ab1");
}

// A journal and its opening balance cover the same partners.
TEST_F(TextComparison, FindsTheSamePartnersForAJournalAndItsBalance) {
  for (const char* code : {"ab", "AB", "aB1", "a", "1"}) {
    const std::string length = std::to_string(std::string(code).size());
    EXPECT_EQ(Found("Select KSID From 厂商资料 Where Left(ClassCode," + length + ") = '" + code + "'"),
              Found(std::string("Select KSID From 厂商资料 Where Left(ClassCode,") + length + ") like '" + code + "'"))
        << code;
  }
}

}  // namespace
}  // namespace stockbook::testing
