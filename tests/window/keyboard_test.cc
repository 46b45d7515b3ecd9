// SPDX-License-Identifier: MIT
// What the keys do in a window. The ledger: row 0 are the captions, row 1 the first period, lines from row 2 on; column
// 0 is fixed, column 1 hidden, the current cell is (1, 2).
#include "window/desk.h"

namespace stockbook::window {
namespace {

using KeyboardInAWindow = WindowTest;

TEST_F(KeyboardInAWindow, ArrowsMoveTheCurrentCellOverWhatIsShown) {
  Key("Down");
  EXPECT_TRUE(Becomes("current", "2 2"));
  Key("Right");
  EXPECT_TRUE(Becomes("current", "2 3"));
  Key("Up");
  EXPECT_TRUE(Becomes("current", "1 3"));
  Key("Left");
  EXPECT_TRUE(Becomes("current", "1 2"));
  Do({"key", "--repeat", "30", "--delay", "1", "Down"});
  EXPECT_TRUE(Becomes("current", "31 2"));
  EXPECT_NE(Now("top"), "1");
}

TEST_F(KeyboardInAWindow, HomeAndEndGoToTheEndsOfTheRow) {
  Key("Down");
  Key("End");
  EXPECT_TRUE(Becomes("current", "2 11"));
  EXPECT_NE(Now("scroll").substr(0, 2), "0 ");
  Key("Home");
  EXPECT_TRUE(Becomes("current", "2 2"));
  EXPECT_EQ(Now("scroll"), "0 0");
}

TEST_F(KeyboardInAWindow, PagesAreAsManyRowsAsAreSeen) {
  Key("Down");
  EXPECT_TRUE(Becomes("current", "2 2"));
  const int page = std::stoi(Now("bottom"));
  Key("Next");
  EXPECT_TRUE(BecomesSo("current", [&](const std::string& cell) {
    const int row = std::stoi(cell);
    return row > page - 2 && row <= page + 2;
  }));
  Key("Prior");
  EXPECT_TRUE(Becomes("current", "2 2"));
}

TEST_F(KeyboardInAWindow, ControlWithHomeAndEndGoesToTheCornersOfTheLedger) {
  Key("ctrl+End");
  EXPECT_TRUE(Becomes("current", "1032 11"));
  EXPECT_TRUE(Becomes("bottom", "1032"));
  Key("ctrl+Home");
  EXPECT_TRUE(Becomes("current", "1 2"));
  EXPECT_TRUE(Becomes("scroll", "0 0"));
}

TEST_F(KeyboardInAWindow, ControlWithAnArrowGoesToTheEdge) {
  Key("Down");
  Key("ctrl+Right");
  EXPECT_TRUE(Becomes("current", "2 11"));
  Key("ctrl+Down");
  EXPECT_TRUE(Becomes("current", "1032 11"));
  Key("ctrl+Left");
  EXPECT_TRUE(Becomes("current", "1032 2"));
  Key("ctrl+Up");
  EXPECT_TRUE(Becomes("current", "1 2"));
}

TEST_F(KeyboardInAWindow, KeysWithAltAreLeftToTheWindow) {
  Key("Down");
  EXPECT_TRUE(Becomes("current", "2 2"));
  Key("alt+Down");
  Key("Right");
  EXPECT_TRUE(Becomes("current", "2 3"));
}

TEST_F(KeyboardInAWindow, ShiftExtendsTheSelectionFromTheCurrentCell) {
  Key("Down");
  Key("shift+Down");
  Key("shift+Down");
  Key("shift+Right");
  EXPECT_TRUE(Becomes("end", "4 3"));
  EXPECT_EQ(Now("current"), "2 2");
  Key("shift+ctrl+End");
  EXPECT_TRUE(Becomes("end", "1032 11"));
  EXPECT_EQ(Now("current"), "2 2");
  Key("Down");
  EXPECT_TRUE(Becomes("current", "3 2"));
  EXPECT_EQ(Now("end"), "3 2");
}

TEST_F(KeyboardInAWindow, ControlWithASelectsEveryCell) {
  Key("ctrl+a");
  EXPECT_TRUE(Becomes("end", "1032 11"));
  EXPECT_EQ(Now("current").substr(0, 2), "1 ");
}

TEST_F(KeyboardInAWindow, ControlWithCCopiesTheSelectionWithItsCaptions) {
  Key("Down");
  Key("shift+Down");
  Key("shift+Right");
  EXPECT_TRUE(Becomes("end", "3 3"));
  Key("ctrl+c");
  EXPECT_TRUE(BecomesSo("clipboard", [](const std::string& text) {
    return text.find("\\t摘要\\r\\n2004-01-01 入库单 R-00001\\t") != std::string::npos &&
           text.find("2004-01-01 出库单 C-00002\\t") != std::string::npos && text.find("00003") == std::string::npos;
  }));
}

TEST_F(KeyboardInAWindow, ControlWithInsertCopiesToo) {
  Key("Down");
  Key("ctrl+Insert");
  EXPECT_TRUE(BecomesSo("clipboard", [](const std::string& text) {
    return text.find("2004-01-01 入库单 R-00001") != std::string::npos;
  }));
}

TEST_F(KeyboardInAWindow, SpaceSelectsWholeRowsWithShiftAndWholeColumnsWithControl) {
  Key("Down");
  Key("shift+Down");
  Key("shift+space");
  EXPECT_TRUE(Becomes("end", "3 11"));
  Key("Down");
  Key("ctrl+space");
  EXPECT_TRUE(BecomesSo("end", [](const std::string& end) { return end.starts_with("1032 "); }));
}

TEST_F(KeyboardInAWindow, TabMovesTheFocusThroughTheWindow) {
  Key("Tab");
  EXPECT_TRUE(Becomes("focus", "after"));
  Key("shift+Tab");
  EXPECT_TRUE(Becomes("focus", "grid"));
  Key("shift+Tab");
  EXPECT_TRUE(Becomes("focus", "before"));
  Key("Tab");
  EXPECT_TRUE(Becomes("focus", "grid"));
  EXPECT_EQ(Now("current"), "1 2");
  Key("Down");
  EXPECT_TRUE(Becomes("current", "2 2"));
}

TEST_F(KeyboardInAWindow, LeftAndRightCloseAndOpenTheNodeOfTheCurrentRow) {
  Key("Left");
  EXPECT_TRUE(Becomes("closed", "1 "));
  EXPECT_EQ(Cell(2, 2).height, 0);
  Key("Right");
  EXPECT_TRUE(Becomes("closed", ""));
  EXPECT_GT(Cell(2, 2).height, 0);
  Key("Right");
  EXPECT_TRUE(Becomes("current", "1 3"));
}

TEST_F(KeyboardInAWindow, LeftOnALineGoesToItsNode) {
  Do({"key", "--repeat", "5", "Down"});
  EXPECT_TRUE(Becomes("current", "6 2"));
  Key("Left");
  EXPECT_TRUE(Becomes("current", "1 2"));
}

TEST_F(KeyboardInAWindow, PlusAndMinusOpenAndCloseTheNodeInAnyColumn) {
  Key("End");
  EXPECT_TRUE(Becomes("current", "1 11"));
  Key("KP_Subtract");
  EXPECT_TRUE(Becomes("closed", "1 "));
  Key("KP_Add");
  EXPECT_TRUE(Becomes("closed", ""));
  Key("minus");
  EXPECT_TRUE(Becomes("closed", "1 "));
  Key("plus");  // with Shift on most keyboards
  EXPECT_TRUE(Becomes("closed", ""));
}

TEST_F(KeyboardInAWindow, ControlWithPlusAndMinusOpensAndClosesAllNodes) {
  Key("ctrl+End");
  EXPECT_TRUE(Becomes("current", "1032 11"));
  Key("ctrl+KP_Subtract");
  EXPECT_TRUE(Becomes("closed", "1 87 173 259 345 431 517 603 689 775 861 947 "));
  Key("ctrl+KP_Add");
  EXPECT_TRUE(Becomes("closed", ""));
}

}  // namespace
}  // namespace stockbook::window
