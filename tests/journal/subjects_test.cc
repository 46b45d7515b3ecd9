// SPDX-License-Identifier: MIT
#include "journal/subjects.h"

#include <gtest/gtest.h>

#include "journal/periods.h"
#include "journal/vocabulary.h"
#include "support/fake_connection.h"

namespace stockbook::journal {
namespace {

using testing::FakeConnection;
using testing::Text;

constexpr const char* kProductQuery =
    "SELECT pd.pdID, pd.商品名称, pd.商品编号, pd.计量单位,pd.计量2, pd.计价方法, pd.进位方法, pd.最低库存, "
    "pd.最高库存, "
    "pd.输入简码, pd.KSID, pd.默认单价, pd.普通税率, pd.增值税率, pd.购进单价, pd.普购税率, pd.增购税率, pd.ClassCode, "
    "pd.单位数量, "
    "pd.存放位置, pd.商品条码, pd.生产厂家, pd.备注, pd.别名, pd.颜色, pd.重量, pd.定义, pd.规格, pd.型号 FROM "
    "商品设置 AS pd Where "
    "pdID=7";

void AnswerProduct(FakeConnection& connection, const char* second_unit) {
  connection.Answer(kProductQuery, {"商品名称", "商品编号", "规格", "型号", "计量单位", "计量2"},
                    {{Text("六角螺栓"), Text("1001"), Text("GB5783"), Text("M8"), Text("箱"), Text(second_unit)}});
}

TEST(Subjects, ReadsAProductWordForWordAndItsDescriptionCrosswise) {
  FakeConnection connection;
  AnswerProduct(connection, "个");
  const SubjectTexts texts = Subjects(&connection, base::MaterialJournal).Read(7, SecondUnit::kHidden);
  EXPECT_EQ(connection.Sent(), (std::vector<std::string>{kProductQuery}));
  EXPECT_EQ(texts.key_name, "六角螺栓");
  EXPECT_EQ(texts.product_no, "1001");
  EXPECT_EQ(texts.standard, "GB5783");
  EXPECT_EQ(texts.model, "M8");
}

TEST(Subjects, ShowsBothUnitsOnlyWhenTheSecondQuantityIsAllowed) {
  FakeConnection connection;
  AnswerProduct(connection, "个");
  EXPECT_EQ(Subjects(&connection, base::ProjectJournal).Read(7, SecondUnit::kShown).measure, "箱/个");
  EXPECT_EQ(Subjects(&connection, base::ProjectJournal).Read(7, SecondUnit::kHidden).measure, "箱");
  AnswerProduct(connection, "");
  EXPECT_EQ(Subjects(&connection, base::ProjectJournal).Read(7, SecondUnit::kShown).measure, "箱");
}

TEST(Subjects, LooksTheSubjectUpAsASupplierOrCustomerInTheirJournals) {
  FakeConnection connection;
  connection.Answer("Select * From 厂商资料 Where ksID=5", {"企业名称", "ClassCode"},
                    {{Text("某某五金厂"), Text("0102")}});
  connection.Answer("Select * From 客户资料 Where ksID=5", {"企业名称", "ClassCode"}, {{Text("某某商行"), Text("02")}});
  const SubjectTexts supplier = Subjects(&connection, base::SupplierJournal).Read(5, SecondUnit::kHidden);
  EXPECT_EQ(supplier.key_name, "某某五金厂");
  EXPECT_EQ(supplier.class_code, "0102");
  EXPECT_EQ(supplier.product_no, "");
  EXPECT_EQ(Subjects(&connection, base::CustomerJournal).Read(5, SecondUnit::kHidden).key_name, "某某商行");
}

TEST(Subjects, LeavesTheTextsEmptyWithoutARowAndWhenTheQueryFails) {
  FakeConnection connection;
  EXPECT_EQ(Subjects(&connection, base::MaterialJournal).Read(7, SecondUnit::kHidden).key_name, "");
  connection.Answer("SELECT pd.pdID", {"商品名称"}, {});
  EXPECT_EQ(Subjects(&connection, base::MaterialJournal).Read(7, SecondUnit::kHidden).key_name, "");
  EXPECT_EQ(Subjects(nullptr, base::MaterialJournal).Read(7, SecondUnit::kHidden).key_name, "");
}

TEST(DepotName, IsAllDepotsForDepotZeroWithoutAQuery) {
  FakeConnection connection;
  EXPECT_EQ(Subjects(&connection, base::MaterialJournal).DepotName({7, 0, "01"}), "全部仓库");
  EXPECT_TRUE(connection.Sent().empty());
}

TEST(DepotName, IsAllProjectsForAnEmptyClassCodeEvenWithASecondKey) {
  FakeConnection connection;
  EXPECT_EQ(Subjects(&connection, base::ProjectJournal).DepotName({7, 5, ""}), "全部项目");
  EXPECT_TRUE(connection.Sent().empty());
}

TEST(DepotName, ReadsTheDepotTheProjectOrTheProjectClass) {
  FakeConnection connection;
  connection.Answer("SELECT * FROM 仓库设置 Where dpID=3", {"仓库名称"}, {{Text("总库")}});
  connection.Answer("SELECT * FROM 项目设置 Where 项目ID=5", {"项目名称"}, {{Text("一号楼")}});
  connection.Answer("SELECT * FROM 项目分类 Where ClassCode='01'", {"ClassName"}, {{Text("基建")}});
  EXPECT_EQ(Subjects(&connection, base::MaterialJournal).DepotName({7, 3, ""}), "总库");
  EXPECT_EQ(Subjects(&connection, base::ProjectJournal).DepotName({7, 5, "01"}), "一号楼");
  EXPECT_EQ(Subjects(&connection, base::CustomerJournal).DepotName({7, 0, "01"}), "基建");
}

TEST(SecondKeyClassCode, AsksTheTableOfTheTypeAndTakesTheStoredKeyForZero) {
  FakeConnection connection;
  connection.Answer("Select ClassCode From", {"ClassCode"}, {{Text("0102")}});
  EXPECT_EQ(Subjects(&connection, base::SupplierJournal).SecondKeyClassCode(0, {7, 5, ""}), "0102");
  EXPECT_EQ(Subjects(&connection, base::CustomerJournal).SecondKeyClassCode(9, {7, 5, ""}), "0102");
  EXPECT_EQ(Subjects(&connection, base::ProjectJournal).SecondKeyClassCode(0, {7, 5, ""}), "0102");
  EXPECT_EQ(connection.Sent(), (std::vector<std::string>{"Select ClassCode From 厂商资料 Where ksID=5",
                                                         "Select ClassCode From 客户资料 Where ksID=9",
                                                         "Select ClassCode From 项目设置 Where pjID=5"}));
}

TEST(SecondKeyClassCode, IsEmptyWithoutAStatementInTheStockJournal) {
  FakeConnection connection;
  EXPECT_EQ(Subjects(&connection, base::MaterialJournal).SecondKeyClassCode(3, {7, 5, ""}), "");
  EXPECT_TRUE(connection.Sent().empty());
}

TEST(SecondKeyClassCode, IsEmptyForANullFieldAndWhenTheStatementFails) {
  FakeConnection connection;
  EXPECT_EQ(Subjects(&connection, base::ProjectJournal).SecondKeyClassCode(3, {7, 5, ""}), "");
  connection.Answer("Select ClassCode From", {"ClassCode"}, {{base::Value()}});
  EXPECT_EQ(Subjects(&connection, base::ProjectJournal).SecondKeyClassCode(3, {7, 5, ""}), "");
}

TEST(AccPeriod, IsTheNewestOne) {
  FakeConnection connection;
  connection.Answer("Select Top 1 * From tqAccPeriod Order by AccPeriod DESC", {"AccPeriod"}, {{Text("2004-06")}});
  EXPECT_EQ(NewestAccPeriod(&connection), "2004-06");
  EXPECT_EQ(NewestAccPeriod(nullptr), "");
}

const auto kUnknown = static_cast<base::tqJournalTypeContants>(9);

TEST(HeaderPicture, IsThatOfTheStockForEveryOtherType) {
  EXPECT_EQ(WordsOf(base::SupplierJournal).journal_picture, "SuppJnl");
  EXPECT_EQ(WordsOf(base::CustomerJournal).journal_picture, "CustJnl");
  EXPECT_EQ(WordsOf(base::ProjectJournal).journal_picture, "ProjJnl");
  EXPECT_EQ(WordsOf(base::MaterialJournal).journal_picture, "StkBk");
  EXPECT_EQ(WordsOf(kUnknown).journal_picture, "StkBk");
}

TEST(Subjects, LooksAnySubjectUpAsAProductInTheOtherTypes) {
  for (const auto type : {base::MaterialJournal, base::ProjectJournal, kUnknown}) {
    FakeConnection connection;
    Subjects(&connection, type).Read(-7, SecondUnit::kHidden);
    ASSERT_EQ(connection.Sent().size(), 1U);
    EXPECT_TRUE(connection.Sent()[0].ends_with(" FROM 商品设置 AS pd Where pdID=-7"));
  }
}

TEST(Subjects, KeepsTheTextsEmptyForAPartnerWithoutARow) {
  FakeConnection connection;
  connection.Answer("Select * From 厂商资料 Where ksID=5", {"企业名称", "ClassCode"}, {});
  const SubjectTexts texts = Subjects(&connection, base::SupplierJournal).Read(5, SecondUnit::kHidden);
  EXPECT_EQ(texts.key_name + texts.class_code, "");
}

TEST(DepotName, IsThatOfAProjectInThePartnerJournalsToo) {
  for (const auto type : {base::SupplierJournal, base::CustomerJournal, base::ProjectJournal}) {
    FakeConnection connection;
    connection.Answer("SELECT * FROM 项目设置 Where 项目ID=5", {"项目名称"}, {{Text("一号楼")}});
    EXPECT_EQ(Subjects(&connection, type).DepotName({7, 5, "01"}), "一号楼");
    EXPECT_EQ(Subjects(&connection, type).DepotName({7, 5, ""}), "全部项目");
    EXPECT_EQ(connection.Sent().size(), 1U);
  }
}

TEST(DepotName, IsAllDepotsForANegativeDepotAndAsksForDepotOne) {
  FakeConnection connection;
  EXPECT_EQ(Subjects(&connection, base::MaterialJournal).DepotName({7, -3, ""}), "全部仓库");
  EXPECT_TRUE(connection.Sent().empty());
  connection.Answer("SELECT * FROM 仓库设置 Where dpID=1", {"仓库名称"}, {{Text("总库")}});
  EXPECT_EQ(Subjects(&connection, base::MaterialJournal).DepotName({7, 1, ""}), "总库");
}

TEST(DepotName, IsEmptyWithoutARowAndWhenTheQueryFails) {
  FakeConnection connection;
  EXPECT_EQ(Subjects(&connection, base::ProjectJournal).DepotName({7, 0, "0'1"}), "");
  EXPECT_EQ(connection.Sent(), (std::vector<std::string>{"SELECT * FROM 项目分类 Where ClassCode='0'1'"}))
      << "the code goes out unescaped";
  connection.Answer("SELECT * FROM 仓库设置", {"仓库名称"}, {});
  EXPECT_EQ(Subjects(&connection, base::MaterialJournal).DepotName({7, 3, ""}), "");
}

TEST(SecondKeyClassCode, IsEmptyWithoutAStatementForAnUnknownTypeAndEmptyWithoutARow) {
  FakeConnection connection;
  EXPECT_EQ(Subjects(&connection, kUnknown).SecondKeyClassCode(3, {7, 5, ""}), "");
  EXPECT_TRUE(connection.Sent().empty());
  connection.Answer("Select ClassCode From 厂商资料 Where ksID=3", {"ClassCode"}, {});
  EXPECT_EQ(Subjects(&connection, base::SupplierJournal).SecondKeyClassCode(3, {7, 5, ""}), "");
}

}  // namespace
}  // namespace stockbook::journal
