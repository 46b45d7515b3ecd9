// SPDX-License-Identifier: MIT
// How the statements are sent, and the conditions that depend on a key being above or
// below a limit.
#include <gtest/gtest.h>

#include <utility>

#include "journal/class_filters.h"
#include "journal/dialect.h"
#include "journal/opening_balance.h"
#include "journal/query_builder.h"
#include "journal/vocabulary.h"
#include "support/fake_connection.h"

namespace stockbook::journal {
namespace {

using testing::FakeConnection;
using testing::Text;
using testing::Whole;

void AnswerPeriods(FakeConnection& connection) {
  connection.Answer("Select * From tqAccPeriod Order by AccPeriod", {"AccPeriod"}, {{Text("2004-01")}});
  connection.Answer("Select Top 1 * From tqAccPeriod", {"AccPeriod"}, {{Text("2004-06")}});
}

bool Contains(const std::string& text, const char* piece) { return text.find(piece) != std::string::npos; }

TEST(Dialect, IsDecidedAnewAtEveryUse) {
  FakeConnection connection;
  AnswerPeriods(connection);
  const QueryBuilder builder(&connection, base::SupplierJournal, {7, 3, ""});
  EXPECT_TRUE(Contains(builder.Build(), "ORDER BY dir.BillDate,dir.单据类型 & dir.单据编号"));
  connection.connection_string = "Provider=SQLOLEDB";
  EXPECT_TRUE(Contains(builder.Build(), "ORDER BY dir.BillDate,dir.单据类型 + dir.单据编号"));
  EXPECT_TRUE(Contains(builder.Build(), "Convert(Char(10),Dir.BillDate,23) + Dir.单据类型"));
}

TEST(ClassFilters, LetTheProviderDecideWhatKindOfCommandTheirTextIs) {
  FakeConnection connection;
  connection.Answer("Select", {"ksID", "pjID"}, {});
  PartnerKeyList(&connection, base::SupplierJournal, "01");
  ProjectKeyList(&connection, "01");
  SupplierKeyList(&connection, "01");
  CustomerKeyList(&connection, "01");
  EXPECT_EQ(connection.options, (std::vector<int>{-1, -1, -1, -1}));
}

TEST(ClassFilters, KeepTheOrderOfTheDatabaseAndRepeatWhatItRepeats) {
  FakeConnection connection;
  connection.Answer("Select", {"ksID", "pjID"}, {{Whole(31), Whole(9)}, {Whole(12), Whole(2)}, {Whole(31), Whole(9)}});
  EXPECT_EQ(PartnerKeyList(&connection, base::CustomerJournal, "01"), "31,12,31");
  EXPECT_EQ(ProjectKeyList(&connection, "01"), "9,2,9");
  EXPECT_EQ(SupplierKeyList(&connection, "01"), "31,12,31");
  EXPECT_EQ(CustomerKeyList(&connection, "01"), "31,12,31");
}

TEST(ClassFilters, PutAnApostropheIntoTheTextAsItStands) {
  FakeConnection connection;
  EXPECT_EQ(ProjectKeyList(&connection, "0'1"), "");
  EXPECT_EQ(SupplierKeyList(&connection, "0'1"), "");
  EXPECT_EQ(CustomerKeyList(&connection, "0'1"), "");
  EXPECT_EQ(connection.Sent(), (std::vector<std::string>{"Select 项目ID As pjID From 项目设置 Where ClassCode='0'1'",
                                                         "Select ksID From 厂商资料 Where Left(ClassCode,3) = '0'1'",
                                                         "Select ksID From 客户资料 Where Left(ClassCode,3)='0'1'"}));
}

TEST(ClassFilters, SendTheServerTheSameWildcard) {
  FakeConnection connection;
  connection.Answer("Select", {"ksID"}, {});
  connection.connection_string = "Provider=SQLOLEDB";
  PartnerKeyList(&connection, base::SupplierJournal, "01");
  EXPECT_EQ(connection.Sent(), (std::vector<std::string>{"Select * From 厂商资料 Where ClassCode like '01%'"}));
}

TEST(QueryBuilder, HasNoConditionForKeysBelowOne) {
  FakeConnection connection;
  AnswerPeriods(connection);
  connection.Answer("Select * From 厂商资料", {"ksID"}, {});
  connection.Answer("Select * From 客户资料", {"ksID"}, {});
  EXPECT_FALSE(Contains(QueryBuilder(&connection, base::MaterialJournal, {7, -1, ""}).Build(), "And Recs.dpID="));
  EXPECT_FALSE(Contains(QueryBuilder(&connection, base::SupplierJournal, {-5, 1, ""}).Build(), "And Recs.pdID="));
  EXPECT_FALSE(Contains(QueryBuilder(&connection, base::CustomerJournal, {-5, 1, ""}).Build(), "And Recs.pdID="));
  EXPECT_FALSE(Contains(QueryBuilder(&connection, base::ProjectJournal, {7, -1, ""}).Build(), "Recs.pjID="));
}

TEST(QueryBuilder, HasItsConditionsFromOneOn) {
  FakeConnection connection;
  AnswerPeriods(connection);
  EXPECT_TRUE(Contains(QueryBuilder(&connection, base::MaterialJournal, {7, 1, ""}).Build(), " And Recs.dpID=1 And "));
  EXPECT_TRUE(Contains(QueryBuilder(&connection, base::SupplierJournal, {1, 1, ""}).Build(),
                       "(Recs.ksID = 1) And Recs.pdID=1"));
  EXPECT_TRUE(Contains(QueryBuilder(&connection, base::CustomerJournal, {1, 1, ""}).Build(),
                       "(Recs.ksID = 1) And Recs.pdID=1"));
  EXPECT_TRUE(Contains(QueryBuilder(&connection, base::ProjectJournal, {7, 1, ""}).Build(), " And Recs.pjID=1 And "));
}

TEST(QueryBuilder, AlwaysAsksForTheProductInStockAndProjectJournals) {
  FakeConnection connection;
  AnswerPeriods(connection);
  EXPECT_TRUE(Contains(QueryBuilder(&connection, base::MaterialJournal, {-5, 1, ""}).Build(), "(Recs.pdID = -5)"));
  EXPECT_TRUE(Contains(QueryBuilder(&connection, base::ProjectJournal, {0, 1, ""}).Build(), "Where  Recs.pdID=0 And"));
}

TEST(QueryBuilder, LimitsThePeriodToNothingWhenThereIsNone) {
  FakeConnection connection;
  EXPECT_TRUE(Contains(QueryBuilder(&connection, base::MaterialJournal, {7, 0, ""}).Build(), " And Dir.AccPeriod<=''"));
}

TEST(OpeningBalance, TestsTheKeysOfPartnersAndProjectsAgainstZero) {
  FakeConnection connection;
  for (const auto type : {base::SupplierJournal, base::CustomerJournal}) {
    EXPECT_TRUE(Contains(BuildBalanceStatement(&connection, type, {-5, 3, ""}, "2004-01"),
                         " Where bn.ksID=3 And bn.pdID=-5 And bn.bnPeriod<='2004-01' "));
    EXPECT_FALSE(Contains(BuildBalanceStatement(&connection, type, {0, 3, ""}, "2004-01"), "bn.pdID"));
  }
  EXPECT_TRUE(Contains(BuildBalanceStatement(&connection, base::ProjectJournal, {7, -2, ""}, "2004-01"),
                       " Where bn.pdID=7 And bn.pjID=-2 GROUP BY bn.bnPeriod"));
  EXPECT_TRUE(connection.Sent().empty()) << "no class is asked for where a key is given";
}

TEST(OpeningBalance, TestsTheDepotForMoreThanZero) {
  FakeConnection connection;
  EXPECT_TRUE(Contains(BuildBalanceStatement(&connection, base::MaterialJournal, {7, 1, ""}, "2004-01"),
                       "Where bn.PdID=7 AND bn.DpID=1  And bn.AccPeriod='2004-01' GROUP BY AccPeriod"));
  EXPECT_FALSE(Contains(BuildBalanceStatement(&connection, base::MaterialJournal, {7, 0, ""}, "2004-01"), "DpID"));
}

TEST(OpeningBalance, LetsTheProviderDecideAndReadsTheEarliestPeriodFirst) {
  FakeConnection connection;
  AnswerPeriods(connection);
  connection.Answer("SELECT TOP 1 AccPeriod AS Period", {"Period"}, {});
  ASSERT_TRUE(OpenOpeningBalance(&connection, base::MaterialJournal, {7, 0, ""}).result.has_value());
  ASSERT_EQ(connection.Sent().size(), 2U);
  EXPECT_EQ(connection.Sent()[0], "Select * From tqAccPeriod Order by AccPeriod");
  EXPECT_EQ(connection.options.back(), -1);
}

TEST(Vocabulary, OfTheFourTypesIsWholeAndInOrder) {
  const std::pair<base::tqJournalTypeContants, std::string> rows[] = {
      {base::MaterialJournal, "商品资料 商品分类 pdID Stockbook"},
      {base::SupplierJournal, "厂商资料 厂商分类 ksID SupplierJournal"},
      {base::CustomerJournal, "客户资料 客户分类 ksID CustomerJournal"},
      {base::ProjectJournal, "项目设置 项目分类 项目ID ProjectJournal"}};
  for (const auto& [type, row] : rows) {
    std::string names(WordsOf(type).subject_table);
    names.append(" ").append(WordsOf(type).class_table).append(" ").append(WordsOf(type).subject_key_field).append(" ");
    EXPECT_EQ(names.append(WordsOf(type).format_name), row);
  }
}

}  // namespace
}  // namespace stockbook::journal
