// SPDX-License-Identifier: MIT
#include "interaction/journal_caption.h"

#include <gtest/gtest.h>

#include "support/fake_connection.h"

namespace stockbook::interaction {
namespace {

using testing::FakeConnection;
using testing::Text;

const std::array<std::string, 4> kTitles = {"商品", "发货单位", "收货单位", "项目"};

journal::SubjectTexts Bolt() {
  journal::SubjectTexts texts;
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

TEST(JournalCaption, IsReadAsOfOneMoment) {
  FakeConnection connection;
  connection.Answer("Select * From 厂商资料", {"企业名称", "ClassCode"}, {{Text("某某五金厂"), Text("0102")}});
  connection.Answer("Select * From 厂商分类", {"ClassCode", "ClassName"}, {{Text("01"), Text("华东")}});
  ComposeCaption(&connection, base::SupplierJournal, {0, 5, ""}, {}, kTitles);
  EXPECT_EQ(connection.moments_of_statements, (std::vector<int>{1, 1}));
  EXPECT_EQ(connection.open_moments, 0);
}

}  // namespace
}  // namespace stockbook::interaction
