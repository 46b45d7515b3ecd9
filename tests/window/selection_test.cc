// SPDX-License-Identifier: MIT
// Selecting with the mouse in a window.
#include "window/desk.h"

namespace stockbook::window {
namespace {

using SelectionInAWindow = WindowTest;

TEST_F(SelectionInAWindow, AClickMovesTheCurrentCell) {
  Click(Cell(4, 3).Middle());
  EXPECT_TRUE(Becomes("current", "4 3"));
  EXPECT_EQ(Now("end"), "4 3");
  EXPECT_TRUE(Becomes("heard", "down 1 up 1 "));
}

TEST_F(SelectionInAWindow, AClickIntoTheGridBringsTheFocusThere) {
  Key("Tab");
  EXPECT_TRUE(Becomes("focus", "after"));
  Click(Cell(4, 3).Middle());
  EXPECT_TRUE(Becomes("focus", "grid"));
}

TEST_F(SelectionInAWindow, ADragSelectsTheCellsThatItCrosses) {
  Pull(Cell(3, 2).Middle(), Cell(7, 4).Middle());
  EXPECT_TRUE(Becomes("end", "7 4"));
  EXPECT_EQ(Now("current"), "3 2");
  MoveTo(Cell(5, 3).Middle());
  EXPECT_TRUE(Becomes("end", "5 3"));
  Release();
  EXPECT_TRUE(Becomes("heard", "down 1 up 1 "));
  MoveTo(Cell(8, 4).Middle());
  EXPECT_TRUE(Becomes("end", "5 3")) << "the button is up";
}

TEST_F(SelectionInAWindow, ADragBelowTheLowerEdgeScrollsAsLongAsItIsHeld) {
  const Area last = Cell(std::stoi(Now("bottom")), 3);
  const int bottom = std::stoi(Now("bottom"));
  Pull(Cell(3, 3).Middle(), {last.Middle().x, 560});
  EXPECT_TRUE(BecomesSo("end", [&](const std::string& end) { return std::stoi(end) > bottom + 20; }));
  EXPECT_EQ(Now("current"), "3 3");
  // Scrolling ends when the mouse is back over the cells.
  MoveTo(last.Middle());
  const std::string row = Now("bottom");
  EXPECT_TRUE(BecomesSo("end", [&](const std::string& end) { return std::stoi(end) <= std::stoi(row); }));
  const std::string scroll = Now("scroll");
  MoveTo({last.Middle().x, last.Middle().y - 2});
  EXPECT_EQ(Now("scroll"), scroll);
  Release();
  EXPECT_TRUE(Becomes("heard", "down 1 up 1 "));
}

TEST_F(SelectionInAWindow, ADragAboveTheUpperEdgeScrollsBack) {
  Key("ctrl+End");
  Key("Home");
  EXPECT_TRUE(Becomes("current", "1032 2"));
  const Area top = Cell(std::stoi(Now("top")), 2);
  Pull(Cell(1032, 2).Middle(), {top.Middle().x, 2});
  EXPECT_TRUE(BecomesSo("end", [](const std::string& end) { return std::stoi(end) < 990; }));
  EXPECT_EQ(Now("current"), "1032 2");
  Release();
}

TEST_F(SelectionInAWindow, AClickWithShiftExtendsTheSelection) {
  Click(Cell(3, 2).Middle());
  EXPECT_TRUE(Becomes("current", "3 2"));
  ClickWith("shift", Cell(9, 4).Middle());
  EXPECT_TRUE(Becomes("end", "9 4"));
  EXPECT_EQ(Now("current"), "3 2");
}

TEST_F(SelectionInAWindow, TheFixedColumnSelectsWholeRows) {
  Drag(Cell(3, 0).Middle(), Cell(5, 0).Middle());
  EXPECT_TRUE(Becomes("end", "5 11"));
  EXPECT_TRUE(BecomesSo("current", [](const std::string& cell) { return cell == "3 1" || cell == "3 2"; }));
}

TEST_F(SelectionInAWindow, ACaptionSelectsItsWholeColumn) {
  Click(Cell(0, 3).Middle());
  EXPECT_TRUE(Becomes("current", "1 3"));
  EXPECT_TRUE(Becomes("end", "1032 3"));
}

TEST_F(SelectionInAWindow, CaptionsWithShiftSelectSeveralColumns) {
  Click(Cell(0, 3).Middle());
  EXPECT_TRUE(Becomes("end", "1032 3"));
  ClickWith("shift", Cell(0, 5).Middle());
  EXPECT_TRUE(Becomes("end", "1032 5"));
  EXPECT_EQ(Now("current"), "1 3");
}

TEST_F(SelectionInAWindow, TheCornerSelectsEverything) {
  Click(Cell(0, 0).Middle());
  EXPECT_TRUE(Becomes("end", "1032 11"));
  EXPECT_TRUE(BecomesSo("current", [](const std::string& cell) { return cell == "1 1" || cell == "1 2"; }));
}

TEST_F(SelectionInAWindow, SelectedCellsHaveTheColourOfTheSelection) {
  const Area cell = Cell(6, 3);
  const Place corner{cell.x + 3, cell.y + 2};
  EXPECT_EQ(ColourAt(corner), "#ffffff");
  Drag(Cell(3, 2).Middle(), cell.Middle());
  EXPECT_TRUE(Becomes("end", "6 3"));
  const Clock::time_point until = Clock::now() + std::chrono::seconds(5);
  while (ColourAt(corner) == "#ffffff" && Clock::now() < until) Ask("state");
  EXPECT_EQ(ColourAt(corner), "#cce2fa");
}

TEST_F(SelectionInAWindow, ARightClickIsHeardAndLeavesTheSelection) {
  Drag(Cell(3, 2).Middle(), Cell(5, 3).Middle());
  EXPECT_TRUE(Becomes("end", "5 3"));
  Click(Cell(4, 2).Middle(), "3");
  EXPECT_TRUE(Becomes("heard", "down 1 up 1 down 2 up 2 "));
  EXPECT_EQ(Now("current"), "3 2");
  EXPECT_EQ(Now("end"), "5 3");
}

TEST_F(SelectionInAWindow, ADoubleClickOnALineIsHeard) {
  DoubleClick(Cell(4, 3).Middle());
  EXPECT_TRUE(Becomes("heard", "down 1 up 1 double up 1 "));
  EXPECT_EQ(Now("current"), "4 3");
}

}  // namespace
}  // namespace stockbook::window
