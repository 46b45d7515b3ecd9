// SPDX-License-Identifier: MIT
// Sizing and moving columns and rows with the mouse in a window.
#include "window/desk.h"

namespace stockbook::window {
namespace {

using ColumnsInAWindow = WindowTest;

bool Holds(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST_F(ColumnsInAWindow, AnEdgeOfACaptionShowsItselfByTheCursor) {
  MoveTo(Cell(0, 2).RightEdge());
  EXPECT_TRUE(Becomes("cursor", "column"));
  MoveTo(Cell(0, 2).Middle());
  EXPECT_TRUE(Becomes("cursor", "arrow"));
  MoveTo(Cell(3, 0).BottomEdge());
  EXPECT_TRUE(Becomes("cursor", "row"));
  MoveTo(Cell(3, 2).Middle());
  EXPECT_TRUE(Becomes("cursor", "arrow"));
}

TEST_F(ColumnsInAWindow, DraggingAnEdgeResizesTheColumn) {
  const Place edge = Cell(0, 2).RightEdge();
  Drag(edge, {edge.x + 33, edge.y});
  EXPECT_TRUE(BecomesSo("columns", [](const std::string& all) { return Holds(all, "BillNo:253 Explain:150 "); }));
  EXPECT_TRUE(Becomes("heard", "down 1 column 2 up 1 "));
  const Place now = Cell(0, 2).RightEdge();
  Drag(now, {now.x - 100, now.y});
  EXPECT_TRUE(BecomesSo("columns", [](const std::string& all) { return Holds(all, "BillNo:153 Explain:150 "); }));
}

TEST_F(ColumnsInAWindow, AColumnNeverShrinksToNothing) {
  const Area caption = Cell(0, 3);
  Drag(caption.RightEdge(), {caption.x - 200, caption.RightEdge().y});
  EXPECT_TRUE(BecomesSo("columns", [](const std::string& all) { return Holds(all, "Explain:4 "); }));
}

TEST_F(ColumnsInAWindow, EscapeGivesTheColumnItsWidthBack) {
  const Place edge = Cell(0, 2).RightEdge();
  Pull(edge, {edge.x + 40, edge.y});
  EXPECT_TRUE(BecomesSo("columns", [](const std::string& all) { return Holds(all, "BillNo:260 "); }));
  Key("Escape");
  EXPECT_TRUE(BecomesSo("columns", [](const std::string& all) { return Holds(all, "BillNo:220 "); }));
  MoveTo({edge.x + 80, edge.y});
  Release();
  EXPECT_TRUE(BecomesSo("heard", [](const std::string& heard) { return heard.ends_with("up 1 "); }));
  EXPECT_TRUE(Holds(Now("columns"), "BillNo:220 "));
}

TEST_F(ColumnsInAWindow, EscapeThatEndsADragDoesNotCloseTheDialogAroundTheGrid) {
  const Place edge = Cell(0, 2).RightEdge();
  Pull(edge, {edge.x + 40, edge.y});
  EXPECT_TRUE(BecomesSo("columns", [](const std::string& all) { return Holds(all, "BillNo:260 "); }));
  Key("Escape");
  EXPECT_TRUE(BecomesSo("columns", [](const std::string& all) { return Holds(all, "BillNo:220 "); }));
  EXPECT_EQ(Now("escapes"), "0");
  Release();
  Key("Escape");
  EXPECT_TRUE(Becomes("escapes", "1")) << "without a drag it is the dialog's key";
}

TEST_F(ColumnsInAWindow, ADoubleClickOnTheEdgeFitsTheColumnToItsTexts) {
  DoubleClick(Cell(0, 3).RightEdge());
  EXPECT_TRUE(BecomesSo("columns", [](const std::string& all) {
    const size_t at = all.find("Explain:");
    const int width = std::stoi(all.substr(at + 8));
    return width != 150 && width > 100 && width < 260;
  }));
  const std::string fitted = Now("columns");
  Ask("double_clicks 1");
  DoubleClick(Cell(0, 3).RightEdge());
  EXPECT_TRUE(Becomes("columns", fitted)) << "what fits stays";
}

TEST_F(ColumnsInAWindow, DraggingACaptionMovesItsColumnToTheMark) {
  const Area target = Cell(0, 5);
  const Place before{target.x + 8, target.Middle().y};
  Pull(Cell(0, 3).Middle(), before);
  EXPECT_TRUE(Becomes("drop", "5"));
  // The mark is painted where the column would go.
  const Place mark{target.x, target.y + 80};
  const Clock::time_point until = Clock::now() + std::chrono::seconds(5);
  while (ColourAt(mark) != "#1d65b5" && Clock::now() < until) Ask("state");
  EXPECT_EQ(ColourAt(mark), "#1d65b5");
  EXPECT_NE(ColourAt({target.x - 20, target.y + 80}), "#1d65b5");
  Release();
  EXPECT_TRUE(BecomesSo("columns",
                        [](const std::string& all) { return Holds(all, "BillNo:220 Price:64 Explain:150 RevQty"); }));
  EXPECT_TRUE(Becomes("heard", "down 1 moved 3 to 4 up 1 "));
  EXPECT_EQ(Now("drop"), "-1");
}

TEST_F(ColumnsInAWindow, ACaptionPulledBeyondTheEdgeScrollsOn) {
  const Place caption = Cell(0, 3).Middle();
  Pull(caption, {800, caption.y});
  EXPECT_TRUE(Becomes("drop", "12"));
  Release();
  EXPECT_TRUE(BecomesSo("columns", [](const std::string& all) { return all.ends_with("Depot:80 Explain:150 "); }));
}

TEST_F(ColumnsInAWindow, EscapeLeavesTheColumnWhereItWas) {
  const std::string columns = Now("columns");
  Pull(Cell(0, 3).Middle(), Cell(0, 5).Middle());
  EXPECT_TRUE(BecomesSo("drop", [](const std::string& drop) { return drop != "-1"; }));
  Key("Escape");
  EXPECT_TRUE(Becomes("drop", "-1"));
  Release();
  EXPECT_TRUE(Becomes("heard", "down 1 up 1 "));
  EXPECT_EQ(Now("columns"), columns);
}

TEST_F(ColumnsInAWindow, DraggingTheEdgeOfARowResizesIt) {
  EXPECT_EQ(Now("heights"), "40 22 22 22 22 22 ");
  const Place edge = Cell(3, 0).BottomEdge();
  Drag(edge, {edge.x, edge.y + 15});
  EXPECT_TRUE(Becomes("heights", "40 22 22 37 22 22 "));
  EXPECT_TRUE(Becomes("heard", "down 1 row 3 up 1 "));
}

TEST_F(ColumnsInAWindow, ADoubleClickOnTheEdgeOfARowFitsItToItsTexts) {
  const Place edge = Cell(3, 0).BottomEdge();
  Drag(edge, {edge.x, edge.y + 30});
  EXPECT_TRUE(Becomes("heights", "40 22 22 52 22 22 "));
  DoubleClick(Cell(3, 0).BottomEdge());
  EXPECT_TRUE(BecomesSo("heights", [](const std::string& all) {
    const int height = std::stoi(all.substr(9));
    return height >= 14 && height <= 24;
  }));
}

TEST_F(ColumnsInAWindow, ACaptionThatIsPulledAHairIsClicked) {
  const Place caption = Cell(0, 3).Middle();
  Drag(caption, {caption.x + 4, caption.y});
  EXPECT_TRUE(Becomes("end", "1032 3"));
  EXPECT_EQ(Now("current"), "1 3");
  EXPECT_EQ(Now("heard"), "down 1 up 1 ");
}

TEST_F(ColumnsInAWindow, EscapeEndsADragOfCellsToo) {
  const Place below{Cell(3, 3).Middle().x, 560};
  Pull(Cell(3, 3).Middle(), below);
  EXPECT_TRUE(BecomesSo("top", [](const std::string& top) { return std::stoi(top) > 3; }));
  Key("Escape");
  MoveTo(Cell(std::stoi(Now("top")) + 3, 3).Middle());
  const std::string end = Now("end");
  MoveTo(Cell(std::stoi(Now("top")) + 6, 4).Middle());
  EXPECT_EQ(Now("end"), end);
  Release();
  EXPECT_TRUE(Becomes("heard", "down 1 up 1 "));
}

}  // namespace
}  // namespace stockbook::window
