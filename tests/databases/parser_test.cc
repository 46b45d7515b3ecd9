// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "databases/dialect/parser.h"
#include "databases/dialect/refusal.h"

namespace stockbook::databases {
namespace {

// The tree as text, each operation in parentheses.
std::string Shape(const Expr& expr) {
  std::string text = expr.text;
  if (expr.kind == ExprKind::kColumn && !expr.qualifier.empty()) text = expr.qualifier + "." + text;
  if (expr.operands.empty()) return expr.kind == ExprKind::kCall ? text + "()" : text;
  std::string list;
  for (const auto& operand : expr.operands) list += (list.empty() ? "" : " ") + Shape(*operand);
  switch (expr.kind) {
    case ExprKind::kIsNull:
      return std::string("(") + (expr.negated ? "notnull " : "isnull ") + list + ")";
    case ExprKind::kIn:
      return std::string("(") + (expr.negated ? "notin " : "in ") + list + ")";
    case ExprKind::kBetween:
      return std::string("(") + (expr.negated ? "notbetween " : "between ") + list + ")";
    case ExprKind::kLike:
      return std::string("(") + (expr.negated ? "notlike " : "like ") + list + ")";
    case ExprKind::kCast:
      return "(cast " + expr.type_name + " " + list + ")";
    case ExprKind::kCase:
      return "(case " + list + ")";
    default:
      return "(" + text + " " + list + ")";
  }
}

std::string Parsed(const std::string& expression, Dialect dialect = Dialect::kDesktop) {
  const Query query = ParseStatement("SELECT " + expression, dialect);
  return Shape(*query.arms[0].items[0].expr);
}

std::string Refused(const std::string& statement, Dialect dialect = Dialect::kDesktop) {
  try {
    ParseStatement(statement, dialect);
  } catch (const Refusal& refusal) {
    return std::to_string(refusal.offset()) + " " + refusal.what();
  }
  return "accepted";
}

TEST(Parser, RanksTheOperatorsOfTheDesktopDialect) {
  EXPECT_EQ(Parsed("a + b * c"), "(+ a (* b c))");
  EXPECT_EQ(Parsed("a & b + c & d"), "(& a (+ b c) d)");
  EXPECT_EQ(Parsed("-a ^ 2"), "(- (^ a 2))");
  EXPECT_EQ(Parsed("2 ^ -a"), "(^ 2 (- a))");
  EXPECT_EQ(Parsed("a \\ b * c Mod d"), "(MOD (\\ a (* b c)) d)");
  EXPECT_EQ(Parsed("a - b - c"), "(- (- a b) c)");
  EXPECT_EQ(Parsed("Not a = b And c Or d"), "(OR (AND (NOT (= a b)) c) d)");
}

TEST(Parser, RanksTheOperatorsOfTheServerDialect) {
  EXPECT_EQ(Parsed("a + b & c", Dialect::kServer), "(& (+ a b) c)");
  EXPECT_EQ(Parsed("a % b + c", Dialect::kServer), "(+ (% a b) c)");
}

TEST(Parser, KeepsAChainInParenthesesApart) {
  EXPECT_EQ(Parsed("(a & b) & c"), "(& (& a b) c)");
  EXPECT_EQ(Parsed("((a + b)) * c"), "(* (+ a b) c)");
}

TEST(Parser, ReadsConditions) {
  EXPECT_EQ(Parsed("a In (1, 2)"), "(in a 1 2)");
  EXPECT_EQ(Parsed("a Not In (1)"), "(notin a 1)");
  EXPECT_EQ(Parsed("a Between 1 And 2 And b"), "(AND (between a 1 2) b)");
  EXPECT_EQ(Parsed("a Is Not Null"), "(notnull a)");
  EXPECT_EQ(Parsed("a Not Like 'x%'"), "(notlike a x%)");
}

TEST(Parser, TellsTheFunctionsLeftAndRightFromJoins) {
  EXPECT_EQ(Parsed("Left(a, 2) & Right(b, 1)"), "(& (Left a 2) (Right b 1))");
  const Query query =
      ParseStatement("SELECT Left(x,1) FROM a LEFT JOIN b ON a.i=b.i RIGHT OUTER JOIN c ON a.i=c.i", Dialect::kDesktop);
  EXPECT_EQ(query.arms[0].from[0]->join, JoinType::kRight);
  EXPECT_EQ(query.arms[0].from[0]->left->join, JoinType::kLeft);
}

TEST(Parser, ReadsCastsAndCasesOfTheServerDialect) {
  EXPECT_EQ(Parsed("Convert(Char(10), d, 23)", Dialect::kServer), "(cast char d 23)");
  EXPECT_EQ(Parsed("CAST(a As varchar(4))", Dialect::kServer), "(cast varchar a)");
  EXPECT_EQ(Parsed("CASE a WHEN 1 THEN 2 ELSE 3 END", Dialect::kServer), "(case a 1 2 3)");
  EXPECT_NE(Refused("SELECT CASE WHEN a THEN 1 END"), "accepted");
}

TEST(Parser, ReadsJoinsHoweverTheyAreBracketed) {
  const Query query = ParseStatement(
      "SELECT * FROM ((a INNER JOIN b ON a.i=b.i) LEFT JOIN (c INNER JOIN d ON c.i=d.i) ON a.i=c.i), e f",
      Dialect::kDesktop);
  ASSERT_EQ(query.arms[0].from.size(), 2U);
  EXPECT_EQ(query.arms[0].from[0]->join, JoinType::kLeft);
  EXPECT_EQ(query.arms[0].from[0]->right->join, JoinType::kInner);
  EXPECT_EQ(query.arms[0].from[1]->alias, "f");
}

TEST(Parser, ReadsAllClausesOfASelect) {
  const Query query = ParseStatement(
      "SELECT DISTINCT TOP 3 a.*, b AS [the b], c d FROM t AS a WHERE a=1 GROUP BY a, b HAVING Sum(c)>0 "
      "UNION ALL SELECT * FROM u UNION (SELECT 1) ORDER BY 1, b DESC;",
      Dialect::kDesktop);
  ASSERT_EQ(query.arms.size(), 3U);
  EXPECT_EQ(query.union_all, (std::vector<bool>{true, false}));
  const SelectCore& core = query.arms[0];
  EXPECT_TRUE(core.distinct);
  EXPECT_EQ(core.top, 3U);
  EXPECT_EQ(core.items[0].all_of, "a");
  EXPECT_EQ(core.items[1].alias, "the b");
  EXPECT_EQ(core.items[2].alias, "d");
  EXPECT_EQ(core.group_by.size(), 2U);
  EXPECT_NE(core.having, nullptr);
  EXPECT_TRUE(query.order[1].descending);
}

TEST(Parser, RefusesEverythingButOneSelect) {
  for (const char* statement : {"",
                                "INSERT INTO a VALUES (1)",
                                "UPDATE a SET b=1",
                                "Drop Table a",
                                "PRAGMA x",
                                "ATTACH 'x' AS y",
                                "SELECT 1; SELECT 2",
                                "SELECT 1;;DELETE FROM a",
                                "WITH a AS (SELECT 1) SELECT 1",
                                "SELECT",
                                "SELECT a b c",
                                "SELECT * FROM",
                                "SELECT a FROM b WHERE",
                                "SELECT a FROM b GROUP a",
                                "SELECT (a",
                                "SELECT a)",
                                "SELECT a FROM b LEFT JOIN c",
                                "SELECT a IN ()",
                                "SELECT a FROM (b",
                                "SELECT TOP a FROM b",
                                "SELECT TOP 5 PERCENT a FROM b",
                                "SELECT a FROM b FULL JOIN c ON b.i=c.i",
                                "SELECT a BETWEEN 1",
                                "SELECT a IS 5",
                                "SELECT a || b",
                                "SELECT a != b",
                                "SELECT a % b",
                                "SELECT a ORDER BY"}) {
    EXPECT_NE(Refused(statement), "accepted") << statement;
  }
}

TEST(Parser, NamesTheWordAtWhichItStopped) {
  EXPECT_EQ(Refused("SELECT a FROM t AS bn  And bn.pdID=1"),
            "23 “And”处有语法错误：此处应为 WHERE、GROUP BY、ORDER BY、UNION 或语句的结尾");
  EXPECT_EQ(Refused("SELECT a FROM t WHERE a ="), "25 语法错误：语句不完整，此处应为字段、常量、函数或“(”");
}

TEST(Parser, BoundsItsNesting) {
  const auto nested = [](const std::string& open, const std::string& close, size_t depth) {
    std::string text = "SELECT ";
    for (size_t level = 0; level < depth; ++level) text += open;
    text += "1";
    for (size_t level = 0; level < depth; ++level) text += close;
    return Refused(text);
  };
  EXPECT_EQ(nested("(", ")", 80), "accepted");
  for (const size_t depth : {1000U, 100000U}) {
    EXPECT_NE(nested("(", ")", depth), "accepted");
    EXPECT_NE(nested("(SELECT ", ")", depth), "accepted");
    EXPECT_NE(nested("- ", "", depth), "accepted");
    EXPECT_NE(nested("NOT ", "", depth), "accepted");
    EXPECT_NE(nested("Left(", ",1)", depth), "accepted");
    EXPECT_NE(nested("1+", "", depth), "accepted");
    EXPECT_NE(nested("1 IN (", ")", depth), "accepted");
    EXPECT_NE(nested("* FROM (SELECT ", ")", depth), "accepted");
  }
}

TEST(Parser, TakesLongListsAndChains) {
  std::string list = "SELECT a FROM t WHERE a IN (0";
  for (int key = 1; key < 20000; ++key) list += "," + std::to_string(key);
  EXPECT_EQ(Refused(list + ")"), "accepted");
  std::string chain = "SELECT a";
  for (int part = 0; part < 5000; ++part) chain += " & b";
  EXPECT_EQ(Refused(chain), "accepted");
}

}  // namespace
}  // namespace stockbook::databases
