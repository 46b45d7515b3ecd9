// SPDX-License-Identifier: MIT
// What a clerk reads in the reference host's window: whole bills, journals that others change, and inventories that
// others hold.
#include <string>

#include "window/desk.h"

namespace stockbook::window {
namespace {

class AReader : public WindowTest {
 protected:
  ::testing::AssertionResult Notices(const std::string& part) {
    return BecomesSo("notices", [&](const std::string& notices) { return notices.find(part) != std::string::npos; });
  }
  // Without a window manager nobody gives a dialog the keys.
  void EnterTheDialog() {
    ASSERT_TRUE(BecomesSo("dialog", [](const std::string& dialog) { return dialog != "0"; }));
    Do({"windowfocus", Now("dialog")});
  }
  void LeaveTheDialog() {
    ASSERT_TRUE(Becomes("dialog", "0"));
    Do({"windowfocus", Now("window")});
  }
};

TEST_F(AReader, LooksAtAWholeBillAndGoesToTheJournalOfALineAndBack) {
  const std::string issue = Ask("issue")["row"];
  Ask("go " + issue + " BillNo");
  const std::string record = Now("record");
  Key("ctrl+b");
  EXPECT_TRUE(BecomesSo("dialogs", [](const std::string& titles) { return titles.find("查看单据") == 0; }));
  EnterTheDialog();
  Key("Return");
  LeaveTheDialog();
  EXPECT_TRUE(Notices("刚才看的是单据"));
  EXPECT_TRUE(Becomes("record", record));
  Key("ctrl+shift+b");
  EnterTheDialog();
  EXPECT_TRUE(Becomes("notices", ""));
  Key("Escape");
  LeaveTheDialog();
  EXPECT_TRUE(Becomes("row", issue));
}

TEST_F(AReader, IsToldThatOthersHavePostedAndReloadsByAKey) {
  const int rows = std::stoi(Now("rows"));
  Ask("post");
  EXPECT_TRUE(Notices("库存已被其他程序修改"));
  EXPECT_EQ(Now("rows"), std::to_string(rows)) << "nothing moves by itself";
  Key("alt+o");
  EXPECT_TRUE(Becomes("rows", std::to_string(rows + 1)));
  EXPECT_TRUE(Becomes("notices", ""));
}

TEST_F(AReader, KeepsTheJournalOfAnInventoryThatOthersHoldAndTriesAgain) {
  const std::string rows = Now("rows");
  Ask("hold");
  Key("F5");
  EXPECT_TRUE(Notices("台账没有载入"));
  EXPECT_EQ(Now("rows"), rows);
  EXPECT_EQ(Now("shown"), "1");
  Ask("release");
  Key("alt+y");
  EXPECT_TRUE(Becomes("notices", ""));
  EXPECT_EQ(Now("rows"), rows);
}

}  // namespace
}  // namespace stockbook::window
