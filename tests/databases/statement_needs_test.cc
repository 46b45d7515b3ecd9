// SPDX-License-Identifier: MIT
#include "databases/dialect/statement_needs.h"

#include <gtest/gtest.h>

#include "databases/dialect/parser.h"
#include "databases/journal_statements.h"

namespace stockbook::databases {
namespace {

// Each table with its conditions: "t[a=1,2 b=3]", "*" before the bracket where all columns are read.
std::string NeedsText(const std::string& statement, Dialect dialect = Dialect::kDesktop) {
  const Query query = ParseStatement(statement, dialect);
  const StatementNeeds all(query);
  std::string text;
  for (const TableNeeds& needs : all.tables()) {
    text.append(text.empty() ? "" : " ").append(needs.name).append(needs.all_columns ? "*" : "");
    for (const WholeNumberCondition& condition : needs.conditions) {
      text += "[" + condition.column + "=";
      for (const std::string& number : condition.numbers)
        text.append(&number == &condition.numbers.front() ? "" : ",").append(number);
      text += "]";
    }
    for (const TextLimit& limit : needs.limits) text += "[" + limit.column + "<=" + limit.text + "]";
  }
  return text;
}

TEST(StatementNeeds, TakesWholeNumbersThatAColumnOfOneTableMustBe) {
  EXPECT_EQ(NeedsText("SELECT a FROM t WHERE b=5 AND c IN (1,-2) AND 7=d"), "t[b=5][c=1,-2][d=7]");
  EXPECT_EQ(NeedsText("SELECT a FROM t AS x LEFT JOIN u AS y ON x.k=y.k WHERE y.b=5 AND x.c=1"), "t[c=1] u[b=5]");
}

TEST(StatementNeeds, TakesNothingThatIsNotCertain) {
  EXPECT_EQ(NeedsText("SELECT a FROM t WHERE b=5 OR c=1"), "t");
  EXPECT_EQ(NeedsText("SELECT a FROM t WHERE NOT b=5"), "t");
  EXPECT_EQ(NeedsText("SELECT a FROM t WHERE b<>5 AND c>1 AND d<>'5' AND e=1.5 AND f NOT IN (1)"), "t");
  EXPECT_EQ(NeedsText("SELECT a FROM t WHERE b IN (1,c)"), "t");
  EXPECT_EQ(NeedsText("SELECT t.a FROM t INNER JOIN u ON t.k=u.k WHERE b=5"), "t u") << "whose b it is, is not known";
  EXPECT_EQ(NeedsText("SELECT t.a FROM t INNER JOIN u ON t.k=u.k AND u.b=5"), "t u");
  EXPECT_EQ(NeedsText("SELECT a FROM t WHERE b=5 UNION SELECT a FROM t WHERE b=6"), "t") << "both need it";
  EXPECT_EQ(NeedsText("SELECT a FROM t WHERE b=5 UNION SELECT a FROM T"), "t");
  EXPECT_EQ(NeedsText("SELECT x.a FROM (SELECT a FROM t) AS x WHERE x.a=5"), "t");
  EXPECT_EQ(NeedsText("SELECT a FROM t WHERE EXISTS (SELECT 1 FROM u WHERE u.b=t.b AND t.c=5)"), "t u");
}

TEST(StatementNeeds, TakesTextsThatAColumnMayNotExceed) {
  EXPECT_EQ(NeedsText("SELECT a FROM t WHERE b<='x' AND 'y'=c AND d<'z' AND 'z'<=e"), "t[b<=x][c<=y]");
  EXPECT_EQ(NeedsText("SELECT a FROM t AS x INNER JOIN u AS y ON x.k=y.k WHERE y.b<='x' AND c='z'"), "t u[b<=x]");
  EXPECT_EQ(NeedsText("SELECT a FROM t WHERE b='x' UNION SELECT a FROM t WHERE b='y'"), "t");
}

TEST(StatementNeeds, KnowsWhichRowsCountTogetherAlone) {
  const auto joins = [](const std::string& statement) {
    const Query query = ParseStatement(statement, Dialect::kDesktop);
    return StatementNeeds(query).JoinsRows("T", "U", "K");
  };
  EXPECT_TRUE(joins("SELECT * FROM t INNER JOIN u ON t.k=u.k"));
  EXPECT_TRUE(joins("SELECT * FROM (u AS y INNER JOIN t AS x ON x.k=y.k AND x.a=1) LEFT JOIN v ON x.b=v.b"));
  EXPECT_FALSE(joins("SELECT * FROM t LEFT JOIN u ON t.k=u.k"));
  EXPECT_FALSE(joins("SELECT * FROM t INNER JOIN u ON t.k=u.k OR t.a=1"));
  EXPECT_FALSE(joins("SELECT * FROM t INNER JOIN u ON t.a=u.a"));
  EXPECT_FALSE(joins("SELECT * FROM t, u WHERE t.k=u.k")) << "not looked for";
  EXPECT_FALSE(joins("SELECT * FROM t INNER JOIN u ON t.k=u.k UNION SELECT * FROM t INNER JOIN v ON t.k=v.k"));
}

TEST(StatementNeeds, NamesColumnsWhereverTheyStand) {
  const Query query = ParseStatement(
      "SELECT a, Sum(b) FROM t INNER JOIN u ON t.c=u.d WHERE Left(e,1)='x' AND f IN (SELECT g FROM v) GROUP BY a "
      "HAVING Sum(h)>0 ORDER BY i",
      Dialect::kDesktop);
  const StatementNeeds needs(query);
  for (const char* column : {"a", "B", "c", "d", "e", "f", "g", "h", "I"}) EXPECT_TRUE(needs.NamesColumn(column));
  EXPECT_FALSE(needs.NamesColumn("x"));
}

TEST(StatementNeeds, KnowsWhoseColumnsAStarMeans) {
  EXPECT_EQ(NeedsText("SELECT * FROM t, u"), "t* u*");
  EXPECT_EQ(NeedsText("SELECT x.* FROM t AS x INNER JOIN u ON x.a=u.a"), "t* u");
  EXPECT_EQ(NeedsText("SELECT * FROM (SELECT a FROM t) AS x"), "t");
  EXPECT_EQ(NeedsText("SELECT Count(*) FROM t"), "t");
}

TEST(StatementNeeds, OfAJournalAreTheLinesOfItsProduct) {
  EXPECT_EQ(NeedsText(testing::MaterialJournal(Dialect::kDesktop, "35)", "2005-12")),
            "入库记录[pdID=35] 入库目录[AccPeriod<=2005-12] 仓库设置 厂商资料 项目设置 出库记录[pdID=35] "
            "出库目录[AccPeriod<=2005-12] 客户资料");
}

}  // namespace
}  // namespace stockbook::databases
