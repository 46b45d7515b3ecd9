// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "journal/opening_balance.h"
#include "journal/periods.h"
#include "journal/query_builder.h"
#include "support/fake_connection.h"

namespace stockbook::journal {
namespace {

using testing::FakeConnection;
using testing::Text;
using testing::Whole;

constexpr const char* kServer = "Provider=Stockbook.Embedded;Dialect=SQL;Data Source=fake";
constexpr const char* kDesktop = "Provider=Stockbook.Embedded;Data Source=fake";

std::string ReadGolden(const std::string& name) {
  std::ifstream file(std::string(STOCKBOOK_SOURCE_DIR) + "/tests/journal/statements/" + name + ".sql",
                     std::ios::binary);
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

// Periods 2004-01 to 2004-06; the class "01" has the members 12, 15 and 31 in every master table.
void Fill(FakeConnection& connection) {
  connection.Answer("Select Top 1 * From tqAccPeriod Order by AccPeriod DESC", {"AccPeriod"}, {{Text("2004-06")}});
  connection.Answer("Select * From tqAccPeriod Order by AccPeriod", {"AccPeriod"},
                    {{Text("2004-01")}, {Text("2004-06")}});
  for (const char* statement :
       {"Select * From 厂商资料 Where ClassCode like '01%'", "Select ksID From 厂商资料 Where Left(ClassCode,2) = '01'",
        "Select ksID From 客户资料 Where Left(ClassCode,2)='01'"}) {
    connection.Answer(statement, {"ksID"}, {{Whole(12)}, {Whole(15)}, {Whole(31)}});
  }
  connection.Answer("Select 项目ID As pjID From 项目设置 Where ClassCode='01'", {"pjID"},
                    {{Whole(12)}, {Whole(15)}, {Whole(31)}});
  for (const char* statement :
       {"Select * From 厂商资料 Where ClassCode like '%'", "Select * From 客户资料 Where ClassCode like '0%'"}) {
    connection.Answer(statement, {"ksID"}, {});
  }
}

struct Scope {
  const char* name;
  int16_t second_key;
  const char* class_code;
};
constexpr Scope kScopes[] = {{"second", 3, ""}, {"class", 0, "01"}, {"none", 0, ""}};
constexpr const char* kTypeNames[] = {"material", "supplier", "customer", "project"};

std::string Built(FakeConnection& connection, base::tqJournalTypeContants type, const SubjectKeys& keys) {
  return QueryBuilder(&connection, type, keys).Build() + "\n--\n" +
         BuildBalanceStatement(&connection, type, keys, EarliestAccPeriod(&connection)) + "\n";
}

TEST(Statements, AreTheSameBlankByBlankForEveryTypeDialectAndScope) {
  for (const char* dialect : {"desktop", "server"}) {
    FakeConnection connection(std::string_view(dialect) == "server" ? kServer : kDesktop);
    Fill(connection);
    for (int type = 0; type < 4; ++type) {
      for (const Scope& scope : kScopes) {
        for (const int32_t product : {7, 0}) {
          const std::string name = std::string(kTypeNames[type]) + "_" + dialect +
                                   (product != 0 ? "_product_" : "_no_product_") + scope.name;
          const std::string golden = ReadGolden(name);
          ASSERT_FALSE(golden.empty()) << name;
          EXPECT_EQ(Built(connection, static_cast<base::tqJournalTypeContants>(type),
                          {product, scope.second_key, scope.class_code}),
                    golden)
              << name;
        }
      }
    }
  }
}

TEST(QueryBuilder, BuildsAnUnknownTypeLikeAProjectAndItsBalanceLikeACustomer) {
  FakeConnection connection;
  Fill(connection);
  const auto unknown = static_cast<base::tqJournalTypeContants>(9);
  EXPECT_EQ(QueryBuilder(&connection, unknown, {7, 3, ""}).Build(),
            QueryBuilder(&connection, base::ProjectJournal, {7, 3, ""}).Build());
  EXPECT_EQ(BuildBalanceStatement(&connection, unknown, {7, 3, ""}, "2004-01"),
            BuildBalanceStatement(&connection, base::CustomerJournal, {7, 3, ""}, "2004-01"));
}

TEST(QueryBuilder, ListsAllDepotsForDepotZeroAndOneDepotForItsNumber) {
  FakeConnection connection;
  Fill(connection);
  EXPECT_EQ(QueryBuilder(&connection, base::MaterialJournal, {7, 0, ""}).Build().find("Recs.dpID=3"),
            std::string::npos);
  const std::string one = QueryBuilder(&connection, base::MaterialJournal, {7, 3, ""}).Build();
  EXPECT_NE(one.find("Where (Recs.pdID = 7) And Recs.dpID=3 And Dir.AccPeriod<='2004-06') As RevRecs"),
            std::string::npos);
  EXPECT_NE(one.find("Where (Recs.pdID = 7) And Recs.dpID=3 And Dir.AccPeriod<='2004-06') AS IssRecs"),
            std::string::npos);
}

TEST(QueryBuilder, TellsItsProgressPartByPart) {
  FakeConnection connection;
  Fill(connection);
  const auto progress_of = [&](base::tqJournalTypeContants type) {
    std::vector<int> heard;
    QueryBuilder(&connection, type, {7, 3, ""}, [&](int indicator) { heard.push_back(indicator); }).Build();
    return heard;
  };
  EXPECT_EQ(progress_of(base::MaterialJournal), (std::vector<int>{10, 20}));
  EXPECT_EQ(progress_of(base::SupplierJournal), (std::vector<int>{20}));
  EXPECT_EQ(progress_of(base::CustomerJournal), (std::vector<int>{20}));
  EXPECT_EQ(progress_of(base::ProjectJournal), (std::vector<int>{10, 20}));
}

TEST(QueryBuilder, ReadsTheNewestPeriodAnewForEveryPart) {
  FakeConnection connection;
  Fill(connection);
  QueryBuilder(&connection, base::MaterialJournal, {7, 0, ""}).Build();
  EXPECT_EQ(connection.Sent().size(), 2U);
}

TEST(QueryBuilder, AsksForTheCustomersOfTheClassNamedLikeTheSecondKey) {
  FakeConnection connection;
  Fill(connection);
  connection.Answer("Select * From 客户资料 Where ClassCode like '-1%'", {"ksID"}, {{Whole(4)}});
  EXPECT_NE(
      QueryBuilder(&connection, base::CustomerJournal, {0, -1, "01"}).Build().find(" Where Recs.ksID in (4) And Dir"),
      std::string::npos);
}

TEST(QueryBuilder, LeavesTheProductConditionWithoutAWhereForAnEmptyClass) {
  FakeConnection connection;
  Fill(connection);
  const std::string statement = QueryBuilder(&connection, base::SupplierJournal, {7, 0, ""}).Build();
  EXPECT_NE(statement.find("On Recs.pdID=pd.pdID  And Recs.pdID=7 And Dir.AccPeriod<="), std::string::npos);
  EXPECT_EQ(statement.find("Where"), std::string::npos);
}

TEST(QueryBuilder, FailsWithAClearSentenceWithoutAConnection) {
  EXPECT_THROW(QueryBuilder(nullptr, base::MaterialJournal, {7, 0, ""}).Build(), platform::Error);
}

TEST(OpeningBalance, OfAProductNeverCarriedForwardIsAnEmptyResult) {
  FakeConnection connection;
  Fill(connection);
  connection.Answer("SELECT TOP 1 AccPeriod AS Period", {"Period", "LastQty"}, {});
  const OpeningBalance balance = OpenOpeningBalance(&connection, base::MaterialJournal, {7, 0, ""});
  ASSERT_TRUE(balance.result.has_value());
  EXPECT_TRUE(balance.result->AtEnd());
  EXPECT_EQ(balance.result->CacheSize(), 1000);
  EXPECT_EQ(balance.first_period, "2004-01");
}

TEST(OpeningBalance, FiltersOnTheSecondKeyMinusOneInAPartnerJournal) {
  FakeConnection connection;
  Fill(connection);
  EXPECT_NE(BuildBalanceStatement(&connection, base::SupplierJournal, {7, -1, "01"}, "2004-01")
                .find(" Where bn.ksID=-1 And bn.pdID=7"),
            std::string::npos);
  EXPECT_EQ(BuildBalanceStatement(&connection, base::MaterialJournal, {7, -1, ""}, "2004-01").find("DpID"),
            std::string::npos);
}

TEST(OpeningBalance, HasNoResultWithoutPeriodsOrWhenItsStatementFails) {
  FakeConnection connection;
  connection.Answer("Select * From tqAccPeriod Order by AccPeriod", {"AccPeriod"}, {});
  EXPECT_FALSE(OpenOpeningBalance(&connection, base::MaterialJournal, {7, 0, ""}).result.has_value());
  Fill(connection);
  connection.Fail("SELECT TOP 1 AccPeriod AS Period", "broken");
  EXPECT_FALSE(OpenOpeningBalance(&connection, base::MaterialJournal, {7, 0, ""}).result.has_value());
  EXPECT_FALSE(OpenOpeningBalance(nullptr, base::MaterialJournal, {7, 0, ""}).result.has_value());
}

}  // namespace
}  // namespace stockbook::journal
