// SPDX-License-Identifier: MIT
// Functions and operators of the two dialects mean the same on every kind of database, or are refused with their place.
#include <gtest/gtest.h>

#include <set>

#include "contract/back_end.h"
#include "databases/sqlite/embedded_connection.h"
#include "stockbook/databases/providers/open_connection.h"
#include "stockbook/platform/error.h"

namespace stockbook::testing {
namespace {

using databases::Dialect;
using databases::EmbeddedConnection;
using databases::Strategy;

// Of both dialects.
constexpr const char* kShared[] = {"k + 1",
                                   "k - i",
                                   "k * 2",
                                   "m * 2",
                                   "m * 0.5",
                                   "m + 1",
                                   "m - k",
                                   "m / 4",
                                   "r / 8",
                                   "-k",
                                   "-m",
                                   "-r",
                                   "Left(t,2)",
                                   "Right(t,3)",
                                   "Trim(t)",
                                   "LTrim(t)",
                                   "RTrim(t)",
                                   "Abs(m)",
                                   "Abs(-k)",
                                   "Year(d)",
                                   "Month(d)",
                                   "Day(d)",
                                   "Space(k)",
                                   "IIf(k>3, 1, 2)",
                                   "k & 6",
                                   "t = 'ab'",
                                   "t <> 'AB'",
                                   "t < 'b'",
                                   "m = 1.5",
                                   "m > r",
                                   "t = 12",
                                   "s = 5",

                                   "t IN ('AB','12')",
                                   "k IN (1,3)",
                                   "k NOT IN (1,3)",
                                   "s IN (5,7)",
                                   "d >= '2005-03-08'",
                                   "k BETWEEN 2 AND 4",
                                   "t BETWEEN 'a' AND 'c'",
                                   "t IS NULL",
                                   "m IS NOT NULL",
                                   "t LIKE 'a%'",
                                   "t LIKE '_b%'",
                                   "t LIKE '[a-b]%'",
                                   "t LIKE '%中%'",
                                   "k IN (SELECT i FROM v)",
                                   "EXISTS (SELECT * FROM v AS w WHERE w.k=v.i)",
                                   "(SELECT Max(w.m) FROM v AS w WHERE w.k<=v.k)"};
constexpr const char* kDesktop[] = {"t & '|' & k & '|' & r & '|' & m & '|' & d & '|' & s",
                                    "Mid(t,2)",
                                    "Mid(t,2,2)",
                                    "Len(t)",
                                    "UCase(t)",
                                    "LCase(t)",
                                    "InStr(t,'B')",
                                    "CDate(s)",
                                    "CDate(2005 & '-' & k & ' -' & 8)",
                                    "CStr(m)",
                                    "CStr(r)",
                                    "CInt(r)",
                                    "CLng(m)",
                                    "CDbl(m)",
                                    "CCur(k)",
                                    "CCur(s)",
                                    "Val(t)",
                                    "IsNumeric(t)",
                                    "IsNull(t)",
                                    "Nz(t)",
                                    "Nz(k, 9)",
                                    "Int(r)",
                                    "Fix(r)",
                                    "Sgn(m)",
                                    "Round(k)",
                                    "Format(k,'00')",
                                    "Format(d,'yyyy-mm-dd')",
                                    "Format(d,'yyyy年mm月dd日')",
                                    "DateSerial(2005, k, 1)",
                                    "d + 1",
                                    "d - 0.5",
                                    "k \\ 2",
                                    "k MOD 3",
                                    "k ^ 2",
                                    "t LIKE '#*'",
                                    "t LIKE '[!a]?*'",
                                    "(k > 2)",
                                    "Not (k > 2)",
                                    "t + 'x'",
                                    "d = #2005-03-08#",
                                    "Sqr(k)",
                                    "Hour(d)",
                                    "Minute(d)",
                                    "Second(d)"};
constexpr const char* kServer[] = {"t + 'x'",
                                   "Convert(Char(10),d,23) + '!'",
                                   "Convert(varchar(10),d,112)",
                                   "Convert(varchar(30),d,121)",
                                   "CAST(k AS varchar(4)) + '年'",
                                   "Right(CAST(10000 + k AS varchar), 2)",
                                   "Convert(Char(6),t) + '|'",
                                   "CAST(r AS int)",
                                   "CAST(m AS int)",
                                   "CAST(s AS float)",
                                   "CAST(m AS decimal(10,2))",
                                   "CAST('2005-3 -8 ' AS datetime)",
                                   "SUBSTRING(t,1,2)",
                                   "CHARINDEX('b',t)",
                                   "Len(t)",
                                   "UPPER(t)",
                                   "LOWER(t)",
                                   "ISNULL(t,'none')",
                                   "COALESCE(m,0)",
                                   "NULLIF(k,3)",
                                   "FLOOR(m)",
                                   "CEILING(m)",
                                   "ROUND(m,1)",
                                   "SIGN(m)",
                                   "SQRT(k)",
                                   "POWER(k,2)",
                                   "k / 2",
                                   "k % 3",
                                   "CASE WHEN k>3 THEN 'big' WHEN k>1 THEN t END",
                                   "CASE k WHEN 1 THEN 1.5 ELSE m END",
                                   "t LIKE '[^a]%'"};

class ExpressionContract : public ::testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    file_.Run(
        "CREATE TABLE v(k INTEGER PRIMARY KEY, i INTEGER, r REAL, m MONEY TEXT, t TEXT, s TEXT, d DATETIME);"
        "INSERT INTO v VALUES (1, 3, 0.1, '1.5', 'Ab', '5', '2005-03-08'), (2, NULL, -2.5, '-0.0001', 'a中文b', "
        "'7.25', "
        "'2005-03-08 10:20:30'), (3, 1, 2.5, '1234.5678', '12', '2005-03-08', '1999-12-31'), (4, 9, 0, '0', ' b ', ' "
        "12 ', "
        "'2004-02-29 23:59:59'), (5, 2, 123456.789, '-7.45', '', 'x', NULL), (6, NULL, NULL, NULL, NULL, NULL, "
        "'1900-01-01')");
    std::string missing;
    back_end_ = MakeBackEnd(GetParam(), file_, missing);
    if (back_end_ == nullptr) GTEST_SKIP() << missing;
  }

  static std::string Outcome(platform::Connection& connection, const std::string& statement) {
    try {
      std::string text;
      for (const std::string& row : ExactRows(connection.Execute(statement))) text += row + "\n";
      return text;
    } catch (const platform::Error& error) {
      return std::string("error: ") + error.what();
    }
  }

  // Those that the connection has no words for.
  template <size_t count>
  std::set<std::string> Refused(Dialect dialect, const char* const (&expressions)[count]) {
    const auto connection = databases::OpenConnection(back_end_->ConnectionString(dialect));
    EmbeddedConnection reference(dialect == Dialect::kServer ? file_.ServerString() : file_.DesktopString(),
                                 Strategy::kStatement);
    std::set<std::string> refused;
    for (const std::string expression : expressions) {
      // A condition stands where the dialect has conditions; both also where they choose rows.
      for (const std::string& statement : {"SELECT k, " + expression + " AS x FROM v ORDER BY k",
                                           "SELECT k FROM v WHERE " + expression + " ORDER BY k"}) {
        const std::string expected = Outcome(reference, statement);
        const std::string found = Outcome(*connection, statement);
        if (found.find("没有与此相应的函数") != std::string::npos) {
          refused.insert(expression);
        } else if (expected.starts_with("error")) {
          EXPECT_TRUE(found.starts_with("error")) << statement << "\n" << found;
        } else {
          EXPECT_EQ(found, expected) << statement;
        }
      }
    }
    return refused;
  }

  DatabaseFile file_;
  std::unique_ptr<BackEnd> back_end_;
};

TEST_P(ExpressionContract, MeansTheSameInTheDesktopDialect) {
  EXPECT_EQ(Refused(Dialect::kDesktop, kShared), std::set<std::string>());
  EXPECT_EQ(Refused(Dialect::kDesktop, kDesktop), std::set<std::string>());
}

TEST_P(ExpressionContract, MeansTheSameInTheServerDialect) {
  EXPECT_EQ(Refused(Dialect::kServer, kShared), std::set<std::string>());
  EXPECT_EQ(Refused(Dialect::kServer, kServer), std::set<std::string>());
}

INSTANTIATE_TEST_SUITE_P(On, ExpressionContract, ::testing::ValuesIn(BackEndKinds()),
                         [](const ::testing::TestParamInfo<std::string>& kind) { return kind.param; });

}  // namespace
}  // namespace stockbook::testing
