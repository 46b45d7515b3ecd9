// SPDX-License-Identifier: MIT
#include "journal/dialect.h"

#include <gtest/gtest.h>

#include "journal/class_filters.h"
#include "journal/vocabulary.h"
#include "support/fake_connection.h"

namespace stockbook::journal {
namespace {

using testing::FakeConnection;
using testing::Text;
using testing::Whole;

TEST(Dialect, IsTheServersOnlyForUpperCaseSqlAnywhereInTheConnectionString) {
  EXPECT_TRUE(IsSqlServerConnection(std::make_unique<FakeConnection>("Provider=SQLOLEDB;Data Source=x").get()));
  EXPECT_TRUE(IsSqlServerConnection(std::make_unique<FakeConnection>("Data Source=MySQL.db").get()));
  EXPECT_FALSE(IsSqlServerConnection(std::make_unique<FakeConnection>("Provider=sqloledb;Data Source=Sql").get()));
  EXPECT_THROW(IsSqlServerConnection(nullptr), platform::Error);
}

TEST(Dialect, SpellsItsExpressions) {
  const FakeConnection desktop("Provider=x");
  const FakeConnection server("Provider=SQL");
  EXPECT_EQ(BillNoExpr(&desktop), "Dir.BillDate & ' ' & Dir.单据类型 & ' ' & Dir.单据编号");
  EXPECT_EQ(BillNoExpr(&server), "Convert(Char(10),Dir.BillDate,23) + Dir.单据类型 + ' ' + Dir.单据编号");
  EXPECT_EQ(PeriodLabelExpr(&desktop, "d.年份", "d.月份"), "(d.年份 & '年' & Format(d.月份,'00') & '月')");
  EXPECT_EQ(PeriodLabelExpr(&server, "d.年份", "d.月份"),
            "CAST(d.年份 As varchar(4))+'年' + right(cast(10000 + d.月份 as varchar), 2)+'月'");
  EXPECT_EQ(BillDateExpr(&desktop, "y", "m", "d"), "CDATE(y & '-' & m &  '-' & d)");
  EXPECT_EQ(BillDateExpr(&server, "y", "m", "d"),
            "Convert(varchar(10),CAST(CAST(y AS char(4)) + '-' + CAST(m AS char(2)) + '-' + CAST(d AS char(2)) AS "
            "DATETIME),121)");
  EXPECT_EQ(BalancePeriodLabelExpr(&desktop), "(bn.年份 & '年' & Format(bn.月份,'00月'))");
  EXPECT_EQ(BalancePeriodLabelExpr(&server), "");
}

TEST(RemoveTable, SendsTheDropAndIgnoresItsError) {
  FakeConnection connection;
  RemoveTable(&connection, "Temp1");
  EXPECT_EQ(connection.Sent(), (std::vector<std::string>{"Drop Table Temp1"}));
  RemoveTable(nullptr, "Temp1");
}

TEST(Vocabulary, NamesTheTablesOfEveryTypeAndNothingForOthers) {
  EXPECT_EQ(WordsOf(base::MaterialJournal).subject_table, "商品资料");
  EXPECT_EQ(WordsOf(base::ProjectJournal).subject_table, "项目设置");
  EXPECT_EQ(WordsOf(base::SupplierJournal).class_table, "厂商分类");
  EXPECT_EQ(WordsOf(base::SupplierJournal).subject_key_field, "ksID");
  EXPECT_EQ(WordsOf(base::CustomerJournal).subject_key_field, "ksID");
  EXPECT_EQ(WordsOf(base::MaterialJournal).format_name, "Stockbook");
  EXPECT_EQ(WordsOf(base::CustomerJournal).format_name, "CustomerJournal");
  for (const int type : {-1, 4, 100}) {
    const auto unknown = static_cast<base::tqJournalTypeContants>(type);
    EXPECT_EQ(WordsOf(unknown).subject_table, "");
    EXPECT_EQ(WordsOf(unknown).class_table, "");
    EXPECT_EQ(WordsOf(unknown).subject_key_field, "");
    EXPECT_EQ(WordsOf(unknown).format_name, "");
  }
}

TEST(ClassFilters, GiveTheEmptyListForAClassWithoutMembers) {
  FakeConnection connection;
  connection.Answer("Select", {"ksID", "pjID"}, {});
  EXPECT_EQ(PartnerKeyList(&connection, base::SupplierJournal, "01"), "");
  EXPECT_EQ(ProjectKeyList(&connection, "01"), "");
}

TEST(ClassFilters, GiveOneMemberWithoutAComma) {
  FakeConnection connection;
  connection.Answer("Select", {"ksID", "pjID"}, {{Whole(12), Whole(5)}});
  EXPECT_EQ(SupplierKeyList(&connection, "01"), "12");
  EXPECT_EQ(ProjectKeyList(&connection, "01"), "5");
}

TEST(ClassFilters, SendTheirTextsAndCountTheCodeInCharacters) {
  FakeConnection connection;
  connection.Answer("Select", {"ksID", "pjID"}, {});
  PartnerKeyList(&connection, base::SupplierJournal, "");
  PartnerKeyList(&connection, base::ProjectJournal, "甲");
  ProjectKeyList(&connection, "01");
  SupplierKeyList(&connection, "甲乙");
  CustomerKeyList(&connection, "010");
  EXPECT_EQ(connection.Sent(), (std::vector<std::string>{
                                   "Select * From 厂商资料 Where ClassCode like '%'",
                                   "Select * From 客户资料 Where ClassCode like '甲%'",
                                   "Select 项目ID As pjID From 项目设置 Where ClassCode='01'",
                                   "Select ksID From 厂商资料 Where Left(ClassCode,2) = '甲乙'",
                                   "Select ksID From 客户资料 Where Left(ClassCode,3)='010'",
                               }));
}

TEST(ClassFilters, QueryNothingForAnEmptyCodeButThePartners) {
  FakeConnection connection;
  EXPECT_EQ(ProjectKeyList(&connection, ""), "");
  EXPECT_EQ(SupplierKeyList(&connection, ""), "");
  EXPECT_EQ(CustomerKeyList(&connection, ""), "");
  EXPECT_TRUE(connection.Sent().empty());
}

TEST(ClassFilters, ComeBackEmptyWhenAnApostropheBreaksTheQuery) {
  FakeConnection connection;
  connection.Fail("Select * From 厂商资料 Where ClassCode like 'O'Neill%'", "syntax error");
  EXPECT_EQ(PartnerKeyList(&connection, base::SupplierJournal, "O'Neill"), "");
  EXPECT_EQ(connection.Sent().size(), 1U);
}

}  // namespace
}  // namespace stockbook::journal
