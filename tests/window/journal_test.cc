// SPDX-License-Identifier: MIT
// A whole journal in a window: its menus, commands and copying.
#include "window/desk.h"

#include <sstream>

namespace stockbook::window {
namespace {

class JournalInAWindow : public WindowTest {
 protected:
  std::string Scene() const override { return "journal"; }

  int Column(const std::string& key) { return std::stoi(Ask("column " + key)["index"]); }
  Area Cell(int row, const std::string& key) { return WindowTest::Cell(row, Column(key)); }
  void RightClick(Area cell) { Click(cell.Middle(), "3"); }
  // Waits for the item of an open menu and clicks it.
  void Choose(const std::string& caption) { Click(Item(caption).Middle()); }
  Area Item(const std::string& caption) {
    EXPECT_TRUE(BecomesSo("menu", [&](const std::string& menu) { return menu.find(caption) != std::string::npos; }));
    std::istringstream words(Ask("item " + caption)["rect"]);
    Area area;
    words >> area.x >> area.y >> area.width >> area.height;
    return area;
  }
  ::testing::AssertionResult Hears(const std::string& what) {
    return BecomesSo("heard", [&](const std::string& heard) { return heard.find(what) != std::string::npos; });
  }
  bool IsHidden(const std::string& key) { return (" " + Now("hidden")).find(" " + key + " ") != std::string::npos; }
  ::testing::AssertionResult BecomesHidden(const std::string& key, bool hidden) {
    return BecomesSo("hidden", [&](const std::string& keys) {
      return ((" " + keys).find(" " + key + " ") != std::string::npos) == hidden;
    });
  }
};

TEST_F(JournalInAWindow, TheRightButtonOnALineOffersItsBill) {
  RightClick(Cell(5, "BillNo"));
  EXPECT_TRUE(Becomes("menu", "查看单据(&B)|复制(&C)|查找(&F)|刷新|"));
  EXPECT_EQ(Now("current"), "5 " + std::to_string(Column("BillNo")));
  Choose("查看单据(&B)");
  EXPECT_TRUE(Hears("CommandExecute Bill |"));
  EXPECT_TRUE(Becomes("menu", ""));
}

TEST_F(JournalInAWindow, FindAndRefreshAreAnnouncedByTheirItems) {
  RightClick(Cell(5, "BillNo"));
  Choose("查找(&F)");
  EXPECT_TRUE(Hears("CommandExecute Find |"));
  RightClick(Cell(5, "BillNo"));
  Choose("刷新");
  EXPECT_TRUE(Hears("CommandExecute Refresh |"));
}

TEST_F(JournalInAWindow, ALineWithoutABillOffersNone) {
  RightClick(Cell(7, "BillNo"));
  EXPECT_TRUE(Becomes("menu", "查看单据(&B) -|复制(&C)|查找(&F)|刷新|"));
  Key("Escape");
  EXPECT_TRUE(Becomes("menu", ""));
}

TEST_F(JournalInAWindow, EscapeClosesAMenuAndNothingHappens) {
  RightClick(Cell(0, "Quantity"));
  EXPECT_TRUE(Becomes("menu", "冻结列(&Z)|隐藏列(&H)|默认格式(&F)|字段显示(&l)|"));
  const std::string hidden = Now("hidden");
  Key("Escape");
  EXPECT_TRUE(Becomes("menu", ""));
  EXPECT_EQ(Now("hidden"), hidden);
  EXPECT_EQ(Now("frozen"), "0");
  EXPECT_TRUE(Becomes("focus", "grid"));
}

TEST_F(JournalInAWindow, TheFieldChooserHidesAndShowsAColumnAtOnce) {
  ASSERT_FALSE(IsHidden("Explain"));
  RightClick(Cell(0, "BillNo"));
  Choose("字段显示(&l)");
  for (const bool hidden : {true, false}) {
    Choose("摘要");
    EXPECT_TRUE(BecomesHidden("Explain", hidden));
    EXPECT_TRUE(Hears("CommandExecute AfterFieldShow |"));
  }
  // The list first, then the menu that it belongs to.
  for (int keys = 0; keys < 2; ++keys) Key("Escape");
  EXPECT_TRUE(Becomes("menu", ""));
}

TEST_F(JournalInAWindow, TheColumnUnderTheMouseIsHiddenButForTheOutline) {
  RightClick(Cell(0, "Explain"));
  Choose("隐藏列(&H)");
  EXPECT_TRUE(BecomesHidden("Explain", true));
  EXPECT_TRUE(Hears("CommandExecute AfterFieldShow |"));
  RightClick(Cell(0, "BillNo"));
  EXPECT_TRUE(Becomes("menu", "冻结列(&Z)|隐藏列(&H) -|默认格式(&F)|字段显示(&l)|"));
  Choose("默认格式(&F)");
  EXPECT_TRUE(Hears("CommandExecute SetDefaultFormat |"));
  EXPECT_TRUE(BecomesHidden("Explain", false));
}

TEST_F(JournalInAWindow, FreezingKeepsTheColumnInViewWhenScrollingSideways) {
  RightClick(Cell(0, "BillNo"));
  Choose("冻结列(&Z)");
  EXPECT_TRUE(Becomes("frozen", std::to_string(Column("BillNo"))));
  const Area before = Cell(4, "BillNo");
  Key("End");
  EXPECT_TRUE(BecomesSo("scroll", [](const std::string& scroll) { return scroll[0] != '0'; }));
  EXPECT_EQ(Cell(4, "BillNo").x, before.x);
}

TEST_F(JournalInAWindow, TheMenuOfATotalFoldsAndUnfoldsAllPeriods) {
  RightClick(Cell(9, "BillNo"));
  EXPECT_TRUE(Becomes("menu", "展开全部(&E)|折叠全部(&L)|复制(&C)|查找(&F)|刷新|"));
  Choose("折叠全部(&L)");
  EXPECT_TRUE(Becomes("closed", "2 10 "));
  RightClick(Cell(2, "BillNo"));
  // By its mnemonic key.
  EXPECT_TRUE(BecomesSo("menu", [](const std::string& menu) { return !menu.empty(); }));
  Key("e");
  EXPECT_TRUE(Becomes("closed", ""));
}

TEST_F(JournalInAWindow, CopyingBringsTheSelectionToTheClipboardByMenuAndByKeys) {
  Drag(Cell(4, "BillNo").Middle(), Cell(5, "BillNo").Middle());
  EXPECT_TRUE(Hears("AfterRangeSelected | MouseUp 1 0 "));
  RightClick(Cell(4, "BillNo"));
  Choose("复制(&C)");
  EXPECT_TRUE(BecomesSo("clipboard", [](const std::string& text) { return !text.empty(); }));
  const std::string copied = Now("clipboard");
  EXPECT_NE(copied.find("\\r\\n出库单 4\\r\\n入库单 5"), std::string::npos) << copied;
  EXPECT_EQ(copied.find("\\n入库单 5") + std::string("\\n入库单 5").size(), copied.size()) << "no line end at the end";
  Drag(Cell(3, "BillNo").Middle(), Cell(4, "BillNo").Middle());
  Key("ctrl+c");
  EXPECT_TRUE(BecomesSo("clipboard", [&](const std::string& text) {
    return text.find("\\r\\n入库单 3\\r\\n出库单 4") != std::string::npos;
  }));
}

TEST_F(JournalInAWindow, ARightClickInsideOfARangeKeepsIt) {
  const std::string column = std::to_string(Column("BillNo"));
  Drag(Cell(4, "BillNo").Middle(), Cell(6, "BillNo").Middle());
  EXPECT_TRUE(Becomes("end", "6 " + column));
  RightClick(Cell(5, "BillNo"));
  EXPECT_TRUE(BecomesSo("menu", [](const std::string& menu) { return !menu.empty(); }));
  EXPECT_EQ(Now("current"), "4 " + column);
  EXPECT_EQ(Now("end"), "6 " + column);
  Key("Escape");
  EXPECT_TRUE(Becomes("menu", ""));
}

TEST_F(JournalInAWindow, ADoubleClickOnABillNumberOpensItAndOnAQuantityDoesNot) {
  DoubleClick(Cell(5, "BillNo").Middle());
  EXPECT_TRUE(Hears("CommandExecute Bill |"));
  DoubleClick(Cell(5, "Quantity").Middle());
  EXPECT_TRUE(Becomes("current", "5 " + std::to_string(Column("Quantity"))));
  const std::string heard = Now("heard");
  EXPECT_EQ(heard.find("CommandExecute Bill"), heard.rfind("CommandExecute Bill"));
}

TEST_F(JournalInAWindow, EnterOpensTheBillOfTheCurrentRow) {
  Click(Cell(5, "BillNo").Middle());
  EXPECT_TRUE(Hears("AfterRowChanged |"));
  Key("Return");
  EXPECT_TRUE(Hears("CommandExecute Bill |"));
}

TEST_F(JournalInAWindow, AClickWithShiftTellsTheIdentifiersOfTheRow) {
  Click(Cell(4, "BillNo").Middle());
  EXPECT_TRUE(Becomes("current", "4 " + std::to_string(Column("BillNo"))));
  ClickWith("shift", Cell(4, "BillNo").Middle());
  EXPECT_TRUE(Hears("Notify BillID:1004 RecID:84 |"));
  EXPECT_EQ(Now("menu"), "");
}

TEST_F(JournalInAWindow, ADraggedRowEdgeIsClampedAndGivesAllLinesTheHeight) {
  const Area row = WindowTest::Cell(4, 0);
  Drag(row.BottomEdge(), {row.Middle().x, row.BottomEdge().y + 5});
  EXPECT_TRUE(BecomesSo("heights", [&](const std::string& heights) {
    std::istringstream words(heights);
    std::vector<int> pixels(6);
    for (int& height : pixels) words >> height;
    return pixels[4] == row.height + 5 && pixels[3] == pixels[4] && pixels[5] == pixels[4];
  }));
  const Area grown = WindowTest::Cell(4, 0);
  Drag(grown.BottomEdge(), {grown.Middle().x, grown.BottomEdge().y + 200});
  const auto height_of = [](const std::string& heights) {
    std::istringstream words(heights);
    int height = 0;
    for (int at = 0; at <= 4; ++at) words >> height;
    return height;
  };
  EXPECT_TRUE(BecomesSo("heights", [&](const std::string& heights) {
    return height_of(heights) > grown.height && height_of(heights) < 100;
  })) << "three text lines at the most";
}

TEST_F(JournalInAWindow, TheCurrentRowIsHotAndTheOneThatWasItGetsItsColoursBack) {
  const auto right_edge = [&](int row) {
    const Area cell = Cell(row, "BillNo");
    return Place{cell.x + cell.width - 6, cell.y + 3};
  };
  const std::string plain = ColourAt(right_edge(5));
  Click(Cell(5, "Quantity").Middle());
  EXPECT_TRUE(Hears("AfterRowChanged |"));
  EXPECT_EQ(ColourAt(right_edge(5)), "#c7d2e2");
  Key("Down");
  EXPECT_TRUE(Hears("出库自“总库”：2005年03月08日采购入库第 12 号 |"));
  EXPECT_EQ(ColourAt(right_edge(6)), "#c7d2e2");
  EXPECT_EQ(ColourAt(right_edge(5)), plain);
}

TEST_F(JournalInAWindow, TheMenuKeyOpensTheMenuUnderTheCurrentCell) {
  Click(Cell(5, "BillNo").Middle());
  EXPECT_TRUE(Hears("AfterRowChanged |"));
  const Area cell = Cell(5, "BillNo");
  MoveTo({20, 12});
  Key("Menu");
  EXPECT_TRUE(Becomes("menu", "查看单据(&B)|复制(&C)|查找(&F)|刷新|"));
  const Area item = Item("查看单据(&B)");
  EXPECT_NEAR(item.x, cell.x, 12);
  EXPECT_NEAR(item.y, cell.y + cell.height, 12);
  Key("b");
  EXPECT_TRUE(Hears("CommandExecute Bill |"));
}

}  // namespace
}  // namespace stockbook::window
