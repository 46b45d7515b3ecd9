// SPDX-License-Identifier: MIT
// Rules of the caption at their limits, and how the events pass on their arguments.
#include <gtest/gtest.h>

#include "interaction/events.h"
#include "interaction/journal_caption.h"
#include "support/fake_connection.h"

namespace stockbook::interaction {
namespace {

using testing::FakeConnection;
using testing::Text;

TEST(JournalCaption, LooksUpThePrefixesOfTwoToTenCharacters) {
  FakeConnection connection;
  const auto caption_of = [&](const char* class_code) {
    const std::array<std::string, 4> titles = {"商品", "发货单位", "收货单位", "项目"};
    return ComposeCaption(&connection, base::ProjectJournal, {0, 0, class_code}, {}, titles).text;
  };
  const std::string unknown = "项目:(无) [商品:(无) 单位:(无)]";
  EXPECT_EQ(caption_of("0102030405067"), unknown);
  EXPECT_EQ(connection.Sent(),
            (std::vector<std::string>{
                "Select * From 项目分类 Where ClassCode='01' Union Select * From 项目分类 Where ClassCode='0102' Union "
                "Select * From 项目分类 Where ClassCode='010203' Union Select * From 项目分类 Where "
                "ClassCode='01020304' Union Select * From 项目分类 Where ClassCode='0102030405'"}));
  EXPECT_EQ(caption_of("1"), unknown);
  EXPECT_EQ(connection.Sent().size(), 1U) << "a code of one character has no class to look up";
}

TEST(JournalCaption, SaysNoneForAClassWithoutANameAndForAnUnknownPartner) {
  FakeConnection connection;
  connection.Answer("Select * From 客户分类", {"ClassCode", "ClassName"},
                    {{Text("01"), Text("华东")}, {Text("0102"), Text("")}});
  connection.Answer("Select * From 客户资料 Where ksID=5", {"企业名称", "ClassCode"}, {});
  const std::array<std::string, 4> titles = {"商品", "发货单位", "收货单位", "项目"};
  const JournalCaption of_class = ComposeCaption(&connection, base::CustomerJournal, {0, 0, "0102"}, {}, titles);
  EXPECT_EQ(of_class.text, "收货单位:华东\\(无)");
  EXPECT_EQ(of_class.picture_key, "CustJnl");
  const JournalCaption one = ComposeCaption(&connection, base::CustomerJournal, {0, 5, ""}, {}, titles);
  EXPECT_EQ(one.text, "收货单位:(无)");
  EXPECT_EQ(one.picture_key, "Customer");
  EXPECT_EQ(ComposeCaption(&connection, base::ProjectJournal, {0, 0, ""}, {}, titles).picture_key, "ProjJnl");
}

TEST(Events, HandTheArgumentsOfMouseUpOnAsTheReceiverWritesThem) {
  struct Writer : EventListener {
    void MouseUp(int16_t& button, int16_t& shift, float& x, float& y) override {
      button += 1;
      shift += 2;
      x += 0.5F;
      y += 0.25F;
    }
  } writer;
  Events events;
  events.AddListener(&writer);
  int16_t button = 1;
  int16_t shift = 4;
  float x = 10;
  float y = 20;
  events.MouseUp(button, shift, x, y);
  EXPECT_EQ(button, 2);
  EXPECT_EQ(shift, 6);
  EXPECT_EQ(x, 10.5F);
  EXPECT_EQ(y, 20.25F);
}

TEST(Events, ComeWithTheArgumentsTheyWereRaisedWith) {
  struct Ear : EventListener {
    void Process(int16_t indicator) override { heard += "Process " + std::to_string(indicator) + ";"; }
    void AfterLoaded() override { heard += "AfterLoaded;"; }
    void AfterFormatted() override { heard += "AfterFormatted;"; }
    void CommandExecute(const std::string& name, bool& /*cancel*/) override { heard += "CommandExecute " + name + ";"; }
    void Notify(const std::string& message) override { heard += "Notify " + message + ";"; }
    void AfterRowChanged() override { heard += "AfterRowChanged;"; }
    void AfterRangeSelected() override { heard += "AfterRangeSelected;"; }
    void FindMsg(const std::string& message) override { heard += "FindMsg " + message + ";"; }
    std::string heard;
  } ear;
  Events events;
  events.AddListener(&ear);
  bool cancel = false;
  events.Process(-1);
  events.AfterLoaded();
  events.AfterFormatted();
  events.CommandExecute("Bill", cancel);
  events.Notify("a");
  events.AfterRowChanged();
  events.AfterRangeSelected();
  events.FindMsg("#END#");
  EXPECT_EQ(ear.heard,
            "Process -1;AfterLoaded;AfterFormatted;CommandExecute Bill;Notify a;AfterRowChanged;AfterRangeSelected;"
            "FindMsg #END#;");
  EXPECT_FALSE(cancel);
}

}  // namespace
}  // namespace stockbook::interaction
