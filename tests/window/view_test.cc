// SPDX-License-Identifier: MIT
// Wheel, outline nodes, tooltips and frozen columns with the mouse in a window.
#include "window/desk.h"

namespace stockbook::window {
namespace {

using ViewInAWindow = WindowTest;

constexpr int kRowPx = 22;
constexpr int kWheelRows = 3;

TEST_F(ViewInAWindow, TheWheelScrollsByRows) {
  MoveTo(Cell(5, 3).Middle());
  Do({"click", "5"});
  EXPECT_TRUE(Becomes("scroll", "0 " + std::to_string(kWheelRows * kRowPx)));
  EXPECT_EQ(Now("current"), "1 2");
  Do({"click", "--repeat", "4", "--delay", "1", "5"});
  EXPECT_TRUE(Becomes("scroll", "0 " + std::to_string(5 * kWheelRows * kRowPx)));
  Do({"click", "--repeat", "9", "--delay", "1", "4"});
  EXPECT_TRUE(Becomes("scroll", "0 0"));
}

TEST_F(ViewInAWindow, TheWheelScrollsSidewaysWithShift) {
  MoveTo(Cell(5, 3).Middle());
  Do({"keydown", "shift", "click", "5", "keyup", "shift"});
  EXPECT_TRUE(Becomes("scroll", std::to_string(kWheelRows * kRowPx) + " 0"));
  Do({"keydown", "shift", "click", "4", "keyup", "shift"});
  EXPECT_TRUE(Becomes("scroll", "0 0"));
  // The second wheel of some mice.
  Do({"click", "7"});
  EXPECT_TRUE(BecomesSo("scroll", [](const std::string& scroll) { return std::stoi(scroll) > 0; }));
}

TEST_F(ViewInAWindow, WheelAndHeldButtonSelectTogether) {
  Press(Cell(3, 3).Middle());
  EXPECT_TRUE(Becomes("current", "3 3"));
  Do({"click", "5"});
  EXPECT_TRUE(Becomes("end", "6 3"));
  Release();
}

TEST_F(ViewInAWindow, FrozenColumnsStayWhereTheyAre) {
  Ask("freeze 2");
  const Area bill = Cell(3, 2);
  MoveTo(Cell(5, 3).Middle());
  Do({"keydown", "shift", "click", "--repeat", "3", "--delay", "1", "5", "keyup", "shift"});
  EXPECT_TRUE(Becomes("scroll", std::to_string(3 * kWheelRows * kRowPx) + " 0"));
  EXPECT_EQ(Cell(3, 2).x, bill.x);
  EXPECT_EQ(Cell(3, 2).width, bill.width);
  Click(Cell(4, 2).Middle());
  EXPECT_TRUE(Becomes("current", "4 2"));
}

TEST_F(ViewInAWindow, ADragWithinFrozenColumnsDoesNotScrollTheOthersBack) {
  Ask("freeze 2");
  MoveTo(Cell(5, 3).Middle());
  Do({"keydown", "shift", "click", "--repeat", "2", "--delay", "1", "5", "keyup", "shift"});
  const std::string scroll = std::to_string(2 * kWheelRows * kRowPx) + " 0";
  EXPECT_TRUE(Becomes("scroll", scroll));
  Pull(Cell(3, 2).Middle(), Cell(6, 2).Middle());
  EXPECT_TRUE(Becomes("end", "6 2"));
  // For longer than the interval of the scroll timer; a slower machine only looks less often.
  for (const Clock::time_point until = Clock::now() + std::chrono::milliseconds(200); Clock::now() < until;)
    ASSERT_EQ(Now("scroll"), scroll);
  Release();
}

TEST_F(ViewInAWindow, AClickOnTheSignClosesAndOpensThePeriod) {
  const Area node = Cell(1, 2);
  const Place sign{node.x + 8, node.Middle().y};
  Click(sign);
  EXPECT_TRUE(Becomes("closed", "1 "));
  EXPECT_GT(Cell(86, 2).height, 0) << "the total stays in sight";
  EXPECT_EQ(Cell(85, 2).height, 0);
  Click(sign);
  EXPECT_TRUE(Becomes("closed", ""));
}

TEST_F(ViewInAWindow, ADoubleClickOnTheSignIsTwoClicks) {
  const Area node = Cell(1, 2);
  DoubleClick({node.x + 8, node.Middle().y});
  EXPECT_TRUE(Becomes("heard", "down 1 up 1 up 1 "));
  EXPECT_EQ(Now("closed"), "");
}

TEST_F(ViewInAWindow, ACutOffCellTellsItsWholeTextInATooltip) {
  const Place edge = Cell(0, 3).RightEdge();
  Drag(edge, {edge.x - 110, edge.y});
  MoveTo(Cell(4, 3).Middle());
  EXPECT_TRUE(BecomesSo("tip", [](const std::string& tip) { return tip.find("新华五金厂") != std::string::npos; }));
  MoveTo(Cell(4, 2).Middle());
  EXPECT_TRUE(Becomes("tip", ""));
}

TEST_F(ViewInAWindow, ATooltipGoesWhenTheCellScrollsAway) {
  const Place edge = Cell(0, 3).RightEdge();
  Drag(edge, {edge.x - 110, edge.y});
  MoveTo(Cell(4, 3).Middle());
  EXPECT_TRUE(BecomesSo("tip", [](const std::string& tip) { return !tip.empty(); }));
  Key("ctrl+End");
  EXPECT_TRUE(Becomes("tip", ""));
}

TEST_F(ViewInAWindow, TheScrollBarScrollsTheRows) {
  const Area wide = Cell(3, 6);
  ASSERT_GT(wide.width, 0);
  // The scroll bar is half a dozen pixels inside the right edge of the window.
  const Place bar{760 - 4 - 6, 250};
  Click(bar);
  EXPECT_TRUE(BecomesSo("top", [](const std::string& top) { return std::stoi(top) > 10; }));
}

}  // namespace
}  // namespace stockbook::window
