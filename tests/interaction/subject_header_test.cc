// SPDX-License-Identifier: MIT
#include "interaction/subject_header.h"

#include <gtest/gtest.h>

#include "interaction/journal_caption.h"
#include "support/fake_connection.h"

namespace stockbook::interaction {
namespace {

using testing::FakeConnection;
using testing::Text;
using testing::Whole;

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

TEST(SubjectHeader, ReadsAProductWordForWordAndItsDescriptionCrosswise) {
  FakeConnection connection;
  AnswerProduct(connection, "个");
  const SubjectTexts texts = SubjectHeader(&connection, base::MaterialJournal).Lookup(7, false);
  EXPECT_EQ(connection.Sent(), (std::vector<std::string>{kProductQuery}));
  EXPECT_EQ(texts.key_name, "六角螺栓");
  EXPECT_EQ(texts.product_no, "1001");
  EXPECT_EQ(texts.standard, "GB5783");
  EXPECT_EQ(texts.model, "M8");
}

TEST(SubjectHeader, ShowsBothUnitsOnlyWhenTheSecondQuantityIsAllowed) {
  FakeConnection connection;
  AnswerProduct(connection, "个");
  EXPECT_EQ(SubjectHeader(&connection, base::ProjectJournal).Lookup(7, true).measure, "箱/个");
  EXPECT_EQ(SubjectHeader(&connection, base::ProjectJournal).Lookup(7, false).measure, "箱");
  AnswerProduct(connection, "");
  EXPECT_EQ(SubjectHeader(&connection, base::ProjectJournal).Lookup(7, true).measure, "箱");
}

TEST(SubjectHeader, LooksTheSubjectUpAsASupplierOrCustomerInTheirJournals) {
  FakeConnection connection;
  connection.Answer("Select * From 厂商资料 Where ksID=5", {"企业名称", "ClassCode"},
                    {{Text("某某五金厂"), Text("0102")}});
  connection.Answer("Select * From 客户资料 Where ksID=5", {"企业名称", "ClassCode"}, {{Text("某某商行"), Text("02")}});
  const SubjectTexts supplier = SubjectHeader(&connection, base::SupplierJournal).Lookup(5, false);
  EXPECT_EQ(supplier.key_name, "某某五金厂");
  EXPECT_EQ(supplier.class_code, "0102");
  EXPECT_EQ(supplier.product_no, "");
  EXPECT_EQ(SubjectHeader(&connection, base::CustomerJournal).Lookup(5, false).key_name, "某某商行");
}

TEST(SubjectHeader, LeavesTheTextsEmptyWithoutARowAndWhenTheQueryFails) {
  FakeConnection connection;
  EXPECT_EQ(SubjectHeader(&connection, base::MaterialJournal).Lookup(7, false).key_name, "");
  connection.Answer("SELECT pd.pdID", {"商品名称"}, {});
  EXPECT_EQ(SubjectHeader(&connection, base::MaterialJournal).Lookup(7, false).key_name, "");
  EXPECT_EQ(SubjectHeader(nullptr, base::MaterialJournal).Lookup(7, false).key_name, "");
}

TEST(DepotName, IsAllDepotsForDepotZeroWithoutAQuery) {
  FakeConnection connection;
  EXPECT_EQ(SubjectHeader(&connection, base::MaterialJournal).DepotName({7, 0, "01"}), "全部仓库");
  EXPECT_TRUE(connection.Sent().empty());
}

TEST(DepotName, IsAllProjectsForAnEmptyClassCodeEvenWithASecondKey) {
  FakeConnection connection;
  EXPECT_EQ(SubjectHeader(&connection, base::ProjectJournal).DepotName({7, 5, ""}), "全部项目");
  EXPECT_TRUE(connection.Sent().empty());
}

TEST(DepotName, ReadsTheDepotTheProjectOrTheProjectClass) {
  FakeConnection connection;
  connection.Answer("SELECT * FROM 仓库设置 Where dpID=3", {"仓库名称"}, {{Text("总库")}});
  connection.Answer("SELECT * FROM 项目设置 Where 项目ID=5", {"项目名称"}, {{Text("一号楼")}});
  connection.Answer("SELECT * FROM 项目分类 Where ClassCode='01'", {"ClassName"}, {{Text("基建")}});
  EXPECT_EQ(SubjectHeader(&connection, base::MaterialJournal).DepotName({7, 3, ""}), "总库");
  EXPECT_EQ(SubjectHeader(&connection, base::ProjectJournal).DepotName({7, 5, "01"}), "一号楼");
  EXPECT_EQ(SubjectHeader(&connection, base::CustomerJournal).DepotName({7, 0, "01"}), "基建");
}

TEST(SecondKeyClassCode, AsksTheTableOfTheTypeAndTakesTheStoredKeyForZero) {
  FakeConnection connection;
  connection.Answer("Select ClassCode From", {"ClassCode"}, {{Text("0102")}});
  EXPECT_EQ(SubjectHeader(&connection, base::SupplierJournal).SecondKeyClassCode(0, {7, 5, ""}), "0102");
  EXPECT_EQ(SubjectHeader(&connection, base::CustomerJournal).SecondKeyClassCode(9, {7, 5, ""}), "0102");
  EXPECT_EQ(SubjectHeader(&connection, base::ProjectJournal).SecondKeyClassCode(0, {7, 5, ""}), "0102");
  EXPECT_EQ(connection.Sent(), (std::vector<std::string>{"Select ClassCode From 厂商资料 Where ksID=5",
                                                         "Select ClassCode From 客户资料 Where ksID=9",
                                                         "Select ClassCode From 项目设置 Where pjID=5"}));
}

TEST(SecondKeyClassCode, IsEmptyWithoutAStatementInTheStockJournal) {
  FakeConnection connection;
  EXPECT_EQ(SubjectHeader(&connection, base::MaterialJournal).SecondKeyClassCode(3, {7, 5, ""}), "");
  EXPECT_TRUE(connection.Sent().empty());
}

TEST(SecondKeyClassCode, IsEmptyForANullFieldAndWhenTheStatementFails) {
  FakeConnection connection;
  EXPECT_EQ(SubjectHeader(&connection, base::ProjectJournal).SecondKeyClassCode(3, {7, 5, ""}), "");
  connection.Answer("Select ClassCode From", {"ClassCode"}, {{base::Value()}});
  EXPECT_EQ(SubjectHeader(&connection, base::ProjectJournal).SecondKeyClassCode(3, {7, 5, ""}), "");
}

TEST(AccPeriod, IsTheNewestOne) {
  FakeConnection connection;
  connection.Answer("Select Top 1 * From tqAccPeriod Order by AccPeriod DESC", {"AccPeriod"}, {{Text("2004-06")}});
  EXPECT_EQ(SubjectHeader(&connection, base::MaterialJournal).AccPeriod(), "2004-06");
  EXPECT_EQ(SubjectHeader(nullptr, base::MaterialJournal).AccPeriod(), "");
}

const std::array<std::string, 4> kTitles = {"商品", "发货单位", "收货单位", "项目"};

SubjectTexts Bolt() {
  SubjectTexts texts;
  texts.key_name = "六角螺栓";
  texts.product_no = "1001";
  texts.model = "M8";
  texts.standard = "GB5783";
  texts.measure = "箱/个";
  return texts;
}

TEST(JournalCaption, NamesTheProductAndTheDepotOfAStockJournal) {
  FakeConnection connection;
  connection.Answer("SELECT * FROM 仓库设置 Where dpID=3", {"仓库名称"}, {{Text("总库")}});
  const JournalCaption all = ComposeCaption(&connection, base::MaterialJournal, {7, 0, ""}, Bolt(), kTitles);
  EXPECT_EQ(all.text, "商品:六角螺栓[1001]{M8\\GB5783} 单位:箱/个 [全部仓库]");
  EXPECT_EQ(all.picture_key, "StkBk");
  const JournalCaption one = ComposeCaption(&connection, base::MaterialJournal, {7, 3, ""}, Bolt(), kTitles);
  EXPECT_EQ(one.text, "商品:六角螺栓[1001]{M8\\GB5783} 单位:箱/个 [总库]");
  EXPECT_EQ(one.picture_key, "Depot");
}

TEST(JournalCaption, SaysNoneForMissingParts) {
  EXPECT_EQ(ComposeCaption(nullptr, base::MaterialJournal, {7, 0, ""}, {}, kTitles).text,
            "商品:(无) 单位:(无) [全部仓库]");
  EXPECT_EQ(ComposeCaption(nullptr, base::SupplierJournal, {7, 5, ""}, {}, kTitles).text, "发货单位:(无)");
}

TEST(JournalCaption, WalksTheClassPathOfAPartner) {
  FakeConnection connection;
  connection.Answer("Select * From 厂商资料 Where ksID=5", {"企业名称", "ClassCode"},
                    {{Text("某某五金厂"), Text("0102")}});
  connection.Answer("Select * From 厂商分类 Where ClassCode='01' Union Select * From 厂商分类 Where ClassCode='0102'",
                    {"ClassCode", "ClassName"}, {{Text("0102"), Text("上海")}, {Text("01"), Text("华东")}});
  const JournalCaption one = ComposeCaption(&connection, base::SupplierJournal, {0, 5, ""}, {}, kTitles);
  EXPECT_EQ(one.text, "发货单位:华东\\上海\\某某五金厂");
  EXPECT_EQ(one.picture_key, "Supplier");
  const JournalCaption of_class = ComposeCaption(&connection, base::SupplierJournal, {0, 0, "0102"}, {}, kTitles);
  EXPECT_EQ(of_class.text, "发货单位:华东\\上海");
  EXPECT_EQ(of_class.picture_key, "SuppJnl");
  EXPECT_EQ(ComposeCaption(&connection, base::CustomerJournal, {0, 0, ""}, {}, kTitles).text, "全部收货单位");
}

TEST(JournalCaption, NamesTheProjectAndItsProduct) {
  FakeConnection connection;
  connection.Answer("Select * From 项目设置 Where 项目ID=5", {"项目名称", "ClassCode"}, {{Text("一号楼"), Text("01")}});
  connection.Answer("Select * From 项目分类 Where ClassCode='01'", {"ClassCode", "ClassName"},
                    {{Text("01"), Text("基建")}});
  const JournalCaption caption = ComposeCaption(&connection, base::ProjectJournal, {7, 5, ""}, Bolt(), kTitles);
  EXPECT_EQ(caption.text, "项目:基建\\一号楼 [商品:六角螺栓[1001]{M8\\GB5783} 单位:箱/个]");
  EXPECT_EQ(caption.picture_key, "Project");
}

}  // namespace
}  // namespace stockbook::interaction
