// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "databases/database_file.h"
#include "databases/sqlite/embedded_connection.h"
#include "stockbook/platform/error.h"

namespace stockbook::testing {
namespace {

using databases::EmbeddedConnection;

struct Case {
  const char* expression;
  const char* expected;  // "~" for null
};

class Expressions : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    file_ = new DatabaseFile;
    file_->Run(
        "CREATE TABLE t(k INTEGER, m MONEY TEXT, d DATE, x TEXT, r REAL, n);"
        "INSERT INTO t VALUES (1,'12.5','2005-03-08','abc',2.5,NULL)");
  }
  static void TearDownTestSuite() { delete file_; }

  static std::string Value(const std::string& connection, const std::string& expression) {
    try {
      const auto rows = EmbeddedConnection(connection).Execute("SELECT " + expression + " FROM t");
      const base::Value value = rows.FieldValue(size_t{0});
      return value.IsNull() ? "~" : value.Text();
    } catch (const platform::Error& error) {
      return std::string("error: ") + error.what();
    }
  }
  static void Check(const std::string& connection, const std::vector<Case>& cases) {
    for (const Case& one : cases) EXPECT_EQ(Value(connection, one.expression), one.expected) << one.expression;
  }
  static void Desktop(const std::vector<Case>& cases) { Check(file_->DesktopString(), cases); }
  static void Server(const std::vector<Case>& cases) { Check(file_->ServerString(), cases); }

  static DatabaseFile* file_;
};
DatabaseFile* Expressions::file_ = nullptr;

TEST_F(Expressions, AmpersandJoinsTextsAndTakesNullForEmptyText) {
  Desktop({{"x & n & 'z'", "abcz"},
           {"n & n", ""},
           {"d & ' ' & m & ' ' & r & ' ' & k", "2005-03-08 12.5 2.5 1"},
           {"0.1 & 1e15 & 2", "0.11E+152"}});
}

TEST_F(Expressions, PlusJoinsTextsAddsNumbersAndKeepsNull) {
  Desktop({{"x + 'd'", "abcd"}, {"x + n", "~"}, {"k + 1", "2"}, {"k + 0.5", "1.5"}, {"'2' + k", "3"}, {"x + k", "~"}});
  Server({{"x + 'd'", "abcd"}, {"x + n", "~"}, {"k + 1", "2"}, {"x + k", "abc1"}, {"'a' + m", "a12.5"}});
}

TEST_F(Expressions, MoneyIsExactInEveryOperation) {
  Desktop({{"m + 0.0001", "12.5001"},
           {"-m", "-12.5"},
           {"m - 12.4999", "0.0001"},
           {"m * 0.17", "2.125"},
           {"m * m", "156.25"},
           {"m * 3", "37.5"},
           {"m * 0.00001", "0.0001"},
           {"Abs(-m)", "12.5"},
           {"Int(-m)", "-13"},
           {"Fix(-m)", "-12"},
           {"Round(m, 0)", "12"},
           {"m / 4", "3.125"},
           {"CCur('922337203685477.5807') & ''", "922337203685477.5807"},
           {"CCur(922337203685477) - CCur('0.0001')", "922337203685476.9999"},
           {"IIf(k = 1, m, 0)", "12.5"},
           {"IIf(k = 2, m, 0)", "0"},
           {"Nz(m)", "12.5"},
           {"m + n", "~"},
           {"m * n", "~"},
           {"-n", "~"},
           {"m + x", "~"}});
}

TEST_F(Expressions, MoneyOutOfRangeIsAnErrorAndNeverWraps) {
  for (const char* expression : {"CCur('922337203685477.5807') + m", "-CCur('-922337203685477.5808')",
                                 "CCur('922337203685477') * 2", "CCur(1e15)", "CCur('-922337203685477.5808') - m"}) {
    EXPECT_TRUE(Value(file_->DesktopString(), expression).starts_with("error: 金额超出范围")) << expression;
  }
}

TEST_F(Expressions, WholeNumbersOutOfRangeAreAnErrorToo) {
  for (const char* expression :
       {"9223372036854775807 + k", "9223372036854775807 * 2", "-9223372036854775807 - 2", "1e308 * 10"}) {
    EXPECT_TRUE(Value(file_->DesktopString(), expression).starts_with("error: 数值超出范围")) << expression;
  }
  EXPECT_TRUE(Value(file_->DesktopString(), "k / 0").starts_with("error: 除数为零"));
  EXPECT_TRUE(Value(file_->DesktopString(), "k Mod 0").starts_with("error: 除数为零"));
  EXPECT_TRUE(Value(file_->DesktopString(), "k \\ 0").starts_with("error: 除数为零"));
}

TEST_F(Expressions, ArithmeticOfTheDesktopDialect) {
  Desktop({{"7 / 2", "3.5"},
           {"7 \\ 2", "3"},
           {"7.5 \\ 2", "4"},
           {"7 Mod 4", "3"},
           {"-7 Mod 4", "-3"},
           {"2 ^ 10", "1024"},
           {"2 ^ -1", "0.5"},
           {"-2 ^ 2", "-4"},
           {"1 - -1", "2"},
           {"--k", "1"},
           {"n ^ 2", "~"},
           {"n / 2", "~"},
           {"n Mod 2", "~"},
           {"x * 2", "~"},
           {"'1.5' * 2", "3"}});
}

TEST_F(Expressions, ArithmeticOfTheServerDialect) {
  Server({{"7 / 2", "3"}, {"7.0 / 2", "3.5"}, {"7 % 4", "3"}, {"5 & 6", "4"}, {"k & 3", "1"}, {"n & 1", "~"}});
  EXPECT_TRUE(Value(file_->ServerString(), "k & ''").starts_with("error: Invalid operator for data type."));
  EXPECT_TRUE(Value(file_->ServerString(), "k ^ 2").starts_with("error: "));
}

TEST_F(Expressions, DatesCountInDays) {
  Desktop({{"d + 1", "2005-03-09"},
           {"d - 8", "2005-02-28"},
           {"d - #2005-03-01#", "7"},
           {"1 + d", "2005-03-09"},
           {"d + 0.5", "2005-03-08 12:00:00"},
           {"d + n", "~"},
           {"d + 1e9", "~"},
           {"d + x", "~"}});
}

TEST_F(Expressions, ComparisonsAreTrueOrFalseAsMinusOneAndZero) {
  Desktop({{"m = 12.5", "-1"},
           {"m > 12.4999", "-1"},
           {"m < '13'", "-1"},
           {"m = x", "~"},
           {"d = #2005-03-08#", "-1"},
           {"d < '2005-3-9'", "-1"},
           {"d > n", "~"},
           {"x = 'abc'", "-1"},
           {"x = 'ABC'", "-1"},
           {"n = n", "~"},
           {"n Is Null", "-1"},
           {"m Is Not Null", "-1"},
           {"Not k = 2", "-1"},
           {"k = 1 And n", "~"},
           {"True", "-1"},
           {"False", "0"},
           {"m Between 12 And 13", "-1"},
           {"k Not Between 2 And 3", "-1"},
           {"m In (1, 12.5)", "-1"},
           {"m In (n)", "~"},
           {"d In ('2005-3-8')", "-1"},
           {"k In (Select k From t)", "-1"},
           {"m In (Select 12.5 From t)", "-1"},
           {"k Not In (2, 3)", "-1"},
           {"12.50001 > m", "-1"},
           {"(Select Max(m) From t)", "12.5"},
           {"Exists (Select 1 From t Where k=2)", "0"}});
}

TEST_F(Expressions, LikeKnowsBothKindsOfWildcards) {
  Desktop({{"x Like 'a%'", "-1"},
           {"x Like 'a*'", "-1"},
           {"x Like '_b_'", "-1"},
           {"x Like '?b?'", "-1"},
           {"x Like 'A%'", "-1"},
           {"x Like 'b%'", "0"},
           {"'a1' Like 'a#'", "-1"},
           {"'ab' Like 'a#'", "0"},
           {"x Like '[a-c]bc'", "-1"},
           {"x Like '[!a-c]bc'", "0"},
           {"'库存' Like '库_'", "-1"},
           {"'库存' Like '_'", "0"},
           {"'' Like '%'", "-1"},
           {"'' Like '_'", "0"},
           {"n Like '%'", "~"},
           {"x Not Like '%z'", "-1"},
           {"x Like 'abc%%%'", "-1"},
           {"'[' Like '['", "-1"},
           {"m Like '12%'", "-1"}});
  Server({{"CASE WHEN x Like 'a%' THEN 1 ELSE 0 END", "1"},
          {"CASE WHEN x Like 'a*' THEN 1 ELSE 0 END", "0"},
          {"CASE WHEN x Like '[^b]bc' THEN 1 ELSE 0 END", "1"},
          {"CASE WHEN 'a#' Like 'a#' THEN 1 ELSE 0 END", "1"}});
}

TEST_F(Expressions, TextFunctionsCountCharacters) {
  Desktop({{"Left('采购入库', 2)", "采购"},
           {"Right('采购入库', 1)", "库"},
           {"Mid('采购入库', 2, 2)", "购入"},
           {"Mid('采购入库', 3)", "入库"},
           {"Len('采购')", "2"},
           {"Left(x, 99)", "abc"},
           {"Left(x, 0)", ""},
           {"Left(x, -1)", ""},
           {"Mid(x, 0, 2)", "a"},
           {"Mid(x, -5, 2)", ""},
           {"Mid(x, 9)", ""},
           {"Left(n, 1)", "~"},
           {"Left(x, n)", "~"},
           {"Len(n)", "~"},
           {"Len(m)", "4"},
           {"Trim('  a b ')", "a b"},
           {"LTrim(' a ') & '|'", "a |"},
           {"RTrim(' a ')", " a"},
           {"RTrim('  ')", ""},
           {"LTrim('  ')", ""},
           {"UCase('aé')", "Aé"},
           {"LCase('AB')", "ab"},
           {"InStr('采购入库', '入')", "3"},
           {"InStr(2, 'aXa', 'A')", "3"},
           {"InStr(x, 'z')", "0"},
           {"InStr(9, x, 'a')", "0"},
           {"InStr(x, n)", "~"},
           {"Replace('aXbx', 'x', '--')", "a--b--"},
           {"Replace(x, '', 'y')", "abc"},
           {"Replace(x, 'b', n)", "~"},
           {"Space(3) & '|'", "   |"},
           {"UCase(n)", "~"},
           {"Trim(n)", "~"}});
  Server({{"SUBSTRING('采购入库', 2, 2)", "购入"},
          {"LEN('ab  ')", "2"},
          {"CHARINDEX('c', x)", "3"},
          {"UPPER(x)", "ABC"},
          {"LEFT(x, 1) + RIGHT(x, 1)", "ac"}});
}

TEST_F(Expressions, FormatFollowsItsPattern) {
  Desktop({{"Format(3, '00')", "03"},
           {"Format(3, '00月')", "03月"},
           {"Format(123, '00')", "123"},
           {"Format(d, 'yyyy-MM-dd')", "2005-03-08"},
           {"Format(d, 'yyyy年MM月dd日')", "2005年03月08日"},
           {"Format(d, 'yy/m/d')", "05/3/8"},
           {"Format(#2005-03-08 14:05:09#, 'hh:mm:ss')", "14:05:09"},
           {"Format(d, 'hh:nn')", "00:00"},
           {"Format('2005-3-8', 'yyyy-mm-dd')", "2005-03-08"},
           {"Format(x, 'yyyy')", "abc"},
           {"Format(x, '00')", "abc"},
           {"Format(1234567.895, '#,##0.00')", "1,234,567.90"},
           {"Format(0.5, '#.##')", ".5"},
           {"Format(0, '0.00')", "0.00"},
           {"Format(-0.001, '0.00')", "0.00"},
           {"Format(0.175, '0.0%')", "17.5%"},
           {"Format(-5, '0;(0)')", "(5)"},
           {"Format(0, '0;-0;none')", "none"},
           {"Format(20050308, '0000-00-00')", "2005-03-08"},
           {"Format(n, '00')", ""},
           {"Format(m, 'Standard')", "12.50"},
           {"Format(CCur('922337203685477.5807'), '0.000')", "922337203685477.581"},
           {"Format(9.995, '0.00')", "10.00"},
           {"Format(12, '\"No \"0\\x')", "No 12x"},
           {"Format(1e20, '0')", "100000000000000000000"},
           {"Format(12)", "12"},
           {"Format(d, 'Short Date')", "2005-03-08"}});
}

TEST_F(Expressions, DateFunctions) {
  Desktop({{"CDate('2005-3-8')", "2005-03-08"},
           {"CDate('2005/3/8 7:05')", "2005-03-08 07:05:00"},
           {"CDate(x)", "~"},
           {"CDate(n)", "~"},
           {"CDate(2)", "1900-01-01"},
           {"Year(d) & Month(d) & Day(d)", "200538"},
           {"Year(x)", "~"},
           {"Year(n)", "~"},
           {"DateSerial(2004, 13, 1)", "2005-01-01"},
           {"DateSerial(2005, 3, 0)", "2005-02-28"},
           {"DateSerial(n, 1, 1)", "~"},
           {"DateSerial(2005, 999999999, 1)", "~"},
           {"Now() >= Date()", "-1"},
           {"Hour(#2005-01-01 14:05:09#)", "14"},
           {"CDate('20050308')", "2005-03-08"}});
  Server({{"YEAR(d) + MONTH(d)", "2008"}, {"CASE WHEN GETDATE() > d THEN 1 END", "1"}});
}

TEST_F(Expressions, ConversionsRoundHalfToEven) {
  Desktop({{"CInt(2.5)", "2"},
           {"CLng(3.5)", "4"},
           {"CLng('7')", "7"},
           {"CLng(m)", "12"},
           {"CLng(x)", "~"},
           {"CDbl('1e3')", "1000"},
           {"CStr(m)", "12.5"},
           {"CStr(n)", "~"},
           {"CCur('1.00005')", "1"},
           {"CCur('1.00015')", "1.0002"},
           {"CCur(x)", "~"},
           {"Round(2.5)", "2"},
           {"Round(2.665, 2)", "2.66"},
           {"Round(n)", "~"},
           {"Int(-1.5)", "-2"},
           {"Fix(-1.5)", "-1"},
           {"Abs(n)", "~"},
           {"Val('12abc')", "12"},
           {"Val('x')", "0"},
           {"IsNull(n)", "-1"},
           {"IsNull(x)", "0"},
           {"IsNumeric('1.5')", "-1"},
           {"Nz(n)", ""},
           {"Nz(n, 'none')", "none"},
           {"Nz(k)", "1"},
           {"IIf(n, 1, 2)", "2"},
           {"IIf(k = 1, 'a', 5)", "a"},
           {"Sgn(-2)", "-1"},
           {"Sqr(-1)", "~"}});
  Server({{"ROUND(2.5, 0)", "3"},
          {"FLOOR(-1.5)", "-2"},
          {"CEILING(1.2)", "2"},
          {"CAST(2.7 AS int)", "2"},
          {"CAST('x' AS int)", "~"},
          {"CAST(1.005 AS decimal(18, 2))", "1.01"},
          {"CAST('1.5' AS money)", "1.5"},
          {"ISNULL(n, 5)", "5"},
          {"COALESCE(n, n, 'z')", "z"},
          {"NULLIF(k, 1)", "~"},
          {"CAST(k AS bit)", "1"}});
}

TEST_F(Expressions, ServerTextsPadAndCut) {
  Server({{"CAST(5 AS char(4)) + '|'", "5   |"},
          {"CAST('abcdef' AS char(3))", "abc"},
          {"CAST('abcdef' AS varchar(3))", "abc"},
          {"Convert(Char(10), d, 23) + '|'", "2005-03-08|"},
          {"Convert(varchar(10), d, 121)", "2005-03-08"},
          {"Convert(varchar(30), d, 120)", "2005-03-08 00:00:00"},
          {"Convert(varchar(8), d, 112)", "20050308"},
          {"Convert(varchar, d)", "Mar  8 2005 12:00AM"},
          {"Convert(varchar(10), n, 23)", "~"},
          {"CAST('2005-3 -8 ' AS DATETIME)", "2005-03-08"},
          {"CAST(x AS datetime)", "~"},
          {"right(cast(10000 + 3 as varchar), 2)", "03"},
          {"CAST('2005-03-08 14:00' AS date)", "2005-03-08"}});
}

TEST_F(Expressions, CaseTakesTheFirstBranchThatHolds) {
  Server({{"CASE WHEN k > 5 THEN 'a' WHEN k = 1 THEN 'b' ELSE 'c' END", "b"},
          {"CASE k WHEN 2 THEN 'a' END", "~"},
          {"CASE m WHEN 12.5 THEN m ELSE 0 END", "12.5"},
          {"CASE WHEN n = 1 THEN 1 ELSE m END", "12.5"},
          {"CASE WHEN k = 1 THEN 1 ELSE m END", "1"}});
}

TEST_F(Expressions, AggregatesLeaveNullsOut) {
  DatabaseFile file;
  file.Run(
      "CREATE TABLE s(g TEXT, m MONEY TEXT, r REAL, i INTEGER); INSERT INTO s VALUES "
      "('a','0.1',0.1,1),('a','0.2',0.2,2),('a',NULL,NULL,NULL),('b','none','none',5)");
  EmbeddedConnection desktop(file.DesktopString());
  EXPECT_EQ(AllRows(desktop.Execute("SELECT g, Sum(m), Avg(m), Sum(r), Sum(i), Avg(i), Count(m), Count(*), Min(m), "
                                    "Max(r) FROM s WHERE g='a' GROUP BY g")),
            std::vector<std::string>{"a|0.3|0.15|0.3|3|1.5|2|3|0.1|0.2"});
  EXPECT_EQ(AllRows(desktop.Execute("SELECT Sum(m), Avg(m), Sum(r), Min(m), Count(m) FROM s WHERE g='b'")),
            std::vector<std::string>{"~|~|~|~|1"});
  EXPECT_EQ(AllRows(desktop.Execute("SELECT Sum(m), Avg(r), Count(*) FROM s WHERE g='c'")),
            std::vector<std::string>{"~|~|0"});
  EXPECT_EQ(
      AllRows(EmbeddedConnection(file.ServerString()).Execute("SELECT Count(DISTINCT g), Sum(DISTINCT i) FROM s")),
      std::vector<std::string>{"2|8"});
}

TEST_F(Expressions, SumsOfMoneyBeyondItsRangeAreAnError) {
  DatabaseFile file;
  file.Run("CREATE TABLE s(m MONEY TEXT); INSERT INTO s VALUES ('922337203685477.5807'),('0.0001')");
  EXPECT_THROW(EmbeddedConnection(file.DesktopString()).Execute("SELECT Sum(m) FROM s"), platform::Error);
  file.Run("INSERT INTO s VALUES ('-1')");
  EXPECT_EQ(AllRows(EmbeddedConnection(file.DesktopString()).Execute("SELECT Sum(m) FROM s")),
            std::vector<std::string>{"922337203685476.5808"});
}

TEST_F(Expressions, CallsWithTheWrongNumberOfArgumentsAreRefused) {
  for (const char* expression : {"Left(x)", "Left(x, 1, 2)", "Len()", "Now(1)", "IIf(1, 2)", "Sum(m, 2)", "Nz()",
                                 "Format()", "NoSuch(1)", "Left(DISTINCT x, 1)", "Convert(Char(10), d, 23)",
                                 "CAST(x AS int)", "Count(DISTINCT x)", "Sum(Sum(m))", "Substring(x, 1, 1)"}) {
    EXPECT_TRUE(Value(file_->DesktopString(), expression).starts_with("error: ")) << expression;
  }
  for (const char* expression : {"Mid(x, 1)", "Format(1, '0')", "Convert(nonsense, x)", "Convert(varchar(10), d, 999)",
                                 "CAST(x AS varchar(0))", "IsNull(x)", "k = 1"}) {
    EXPECT_TRUE(Value(file_->ServerString(), expression).starts_with("error: ")) << expression;
  }
}

}  // namespace
}  // namespace stockbook::testing
