// SPDX-License-Identifier: MIT
#include <string>

#include "sheet/input_fixture.h"

namespace stockbook::sheet {
namespace {

using test::CellRange;
using test::Input;
using test::kNone;
using test::kShift;
using test::Numbers;
using test::Together;

TEST_F(Input, ClickingSelectsACellAndDraggingARange) {
  Click(Middle(3, 2));
  EXPECT_EQ(Current(), (CellPosition{3, 2}));
  EXPECT_EQ(sheet.MouseRow(), 3);
  EXPECT_EQ(sheet.MouseCol(), 2);
  Drag(Middle(3, 2), Middle(5, 4));
  EXPECT_EQ(Selected(), (CellRange{3, 2, 6, 5}));
  Drag(Middle(5, 4), Middle(3, 2));
  EXPECT_EQ(Current(), (CellPosition{5, 4}));
  EXPECT_EQ(Selected(), (CellRange{3, 2, 6, 5}));
  Click(Middle(7, 4), kShift);
  EXPECT_EQ(Current(), (CellPosition{5, 4}));
  EXPECT_EQ(Selected(), (CellRange{5, 4, 8, 5}));
}

TEST_F(Input, ObserverHearsOfTheMouseAfterTheSheetActed) {
  listener.Take();
  Click({140, 50}, kShift);
  EXPECT_EQ(listener.Take(), "down 1 1 140 50;up 1 1 140 50;");
  mouse.Press({MouseButton::kRight, kNone, {240, 110}});
  EXPECT_EQ(listener.Take(), "down 2 0 240 110;");
  EXPECT_EQ(Current(), (CellPosition{1, 1}));
  EXPECT_EQ(sheet.MouseRow(), 5);
  EXPECT_EQ(sheet.MouseCol(), 3);
  mouse.DoubleClick({MouseButton::kLeft, kNone, {240, 110}});
  EXPECT_EQ(listener.Take(), "double;");
  mouse.DoubleClick({MouseButton::kMiddle, kNone, {240, 110}});
  mouse.DoubleClick({MouseButton::kRight, kNone, {240, 110}});
  EXPECT_EQ(listener.Take(), "") << "only the left button's counts";
  mouse.Press({MouseButton::kRight, kNone, {-5, 110}});
  EXPECT_EQ(sheet.MouseCol(), -1);
}

TEST_F(Input, FixedCellsSelectWholeRowsColumnsAndAll) {
  Click(Middle(4, 0));
  EXPECT_EQ(Selected(), (CellRange{4, 1, 5, 5}));
  Drag(Middle(4, 0), Middle(6, 0));
  EXPECT_EQ(Selected(), (CellRange{4, 1, 7, 5}));
  Click(Middle(0, 3));
  EXPECT_EQ(Selected(), (CellRange{1, 3, 1001, 4}));
  Click(Middle(0, 0));
  EXPECT_EQ(Selected(), (CellRange{1, 1, 1001, 5}));
}

TEST_F(Input, ClickingTheSignFoldsTheNodeWithoutMovingTheCurrentCell) {
  sheet.GroupBy(1, 2, "%s");
  sheet.SetOutlineCol(2);
  sheet.Select(3, 3);
  const Rect cell = sheet.view().geometry().CellRect(1, 2);
  Click({cell.x + 8, cell.y + 10});
  EXPECT_TRUE(sheet.IsCollapsed(1));
  EXPECT_EQ(Current(), (CellPosition{3, 3}));
  mouse.DoubleClick({MouseButton::kLeft, kNone, {cell.x + 8, cell.y + 10}});
  EXPECT_FALSE(sheet.IsCollapsed(1));
  Click({cell.x + 30, cell.y + 10});
  EXPECT_FALSE(sheet.IsCollapsed(1));
  EXPECT_EQ(Current(), (CellPosition{1, 2}));
}

TEST_F(Input, DraggingAHeaderEdgeResizesItsColumn) {
  listener.Take();
  Drag({229, 10}, {259, 12});
  EXPECT_EQ(sheet.ColWidth(2), 1950);
  EXPECT_EQ(listener.Take(), "resize? -1 2;down 1 0 229 10;resized -1 2;up 1 0 259 12;");
  listener.verdict = platform::Verdict::kRefuse;
  Drag({259, 10}, {200, 10});
  EXPECT_EQ(sheet.ColWidth(2), 1950);
  listener.verdict = platform::Verdict::kAllow;
  Drag({259, 10}, {-500, 10});
  EXPECT_EQ(sheet.ColWidth(2), 60);
}

TEST_F(Input, DraggingAnEdgeInTheFixedColumnResizesItsRow) {
  Drag({10, 79}, {10, 99});
  EXPECT_EQ(sheet.RowHeight(3), 600);
  EXPECT_NE(listener.Take().find("resized 3 -1;"), std::string::npos);
}

TEST_F(Input, ACancelledResizeGivesTheOldWidthBack) {
  DragTo({229, 10}, {329, 10});
  EXPECT_NE(sheet.ColWidth(2), 1500);
  mouse.Cancel();
  EXPECT_EQ(sheet.ColWidth(2), 1500);
}

TEST_F(Input, DraggingACaptionMovesItsColumn) {
  sheet.SetColKey(1, "A");
  sheet.SetColKey(4, "D");
  DragTo(Middle(0, 1), {350, 10});
  EXPECT_EQ(sheet.view().drop_column(), 4);
  mouse.Release({MouseButton::kLeft, kNone, {350, 10}});
  EXPECT_EQ(sheet.ColIndex("A"), 3);
  EXPECT_EQ(sheet.view().drop_column(), -1);
  EXPECT_NE(listener.Take().find("moved 1 3;"), std::string::npos);
  Drag(Middle(0, 4), {35, 10});
  EXPECT_EQ(sheet.ColIndex("D"), 1);
  Drag(Middle(0, 3), {5, 10});
  EXPECT_EQ(sheet.ColKey(0), "");
  EXPECT_EQ(sheet.ColIndex("D"), 2);
}

TEST_F(Input, TheCursorTellsOfEdges) {
  mouse.Move({MouseButton::kNone, kNone, {230, 10}});
  EXPECT_EQ(listener.cursor, Cursor::kColumnResize);
  mouse.Move({MouseButton::kNone, kNone, {180, 10}});
  EXPECT_EQ(listener.cursor, Cursor::kDefault);
  mouse.Move({MouseButton::kNone, kNone, {10, 60}});
  EXPECT_EQ(listener.cursor, Cursor::kRowResize);
}

TEST_F(Input, DraggingBeyondTheCellsScrollsAndExtends) {
  DragTo(Middle(3, 2), {240, 260});
  EXPECT_TRUE(mouse.WantsAutoScroll());
  const int before = sheet.RowSel();
  for (int tick = 0; tick < 10; ++tick) mouse.AutoScroll();
  EXPECT_GT(sheet.RowSel(), before + 10);
  EXPECT_EQ(Current(), (CellPosition{3, 2}));
  mouse.Move({MouseButton::kLeft, kNone, {240, 5}});
  EXPECT_TRUE(mouse.WantsAutoScroll());
  mouse.Move({MouseButton::kLeft, kNone, {240, 100}});
  EXPECT_FALSE(mouse.WantsAutoScroll());
  mouse.Release({MouseButton::kLeft, kNone, {240, 300}});
  EXPECT_FALSE(mouse.WantsAutoScroll());
}

TEST_F(Input, TheWheelScrollsByPixels) {
  mouse.Wheel(0, 33);
  EXPECT_EQ(sheet.view().geometry().scroll().y, 33);
  mouse.Wheel(0, -100);
  EXPECT_EQ(sheet.view().geometry().scroll().y, 0);
  mouse.Wheel(0, INT64_MAX / 2);
  EXPECT_EQ(sheet.BottomRow(), 1000);
}

TEST_F(Input, NobodyIsToldWhileRedrawIsOffAndAllIsRepaintedWhenItIsOnAgain) {
  sheet.SetRedraw(false);
  listener.damages = 0;
  listener.scrolls = 0;
  sheet.SetTextMatrix(1, 1, "x");
  sheet.SetRowHidden(5, true);
  sheet.view().ScrollBy(0, 100);
  sheet.LoadColumns(Together(Numbers(50)), 1);
  EXPECT_EQ(listener.damages, 0);
  EXPECT_EQ(listener.scrolls, 0);
  sheet.SetRedraw(true);
  EXPECT_EQ(listener.damages, 1);
  EXPECT_EQ(listener.damaged, (Rect{0, 0, 430, 220}));
  EXPECT_EQ(listener.scrolls, 1);
}

TEST_F(Input, ACellThatChangesDamagesItselfAlone) {
  sheet.SetTextMatrix(2, 2, "x");
  EXPECT_EQ(listener.damaged, sheet.view().geometry().CellRect(2, 2));
  const int before = listener.damages;
  sheet.SetTextMatrix(900, 2, "x");
  EXPECT_EQ(listener.damages, before);
  sheet.view().ScrollBy(0, 5);
  EXPECT_EQ(listener.damages, before);
  EXPECT_EQ(listener.scrolls, 1);
}

TEST_F(Input, ADragWithinFrozenColumnsLeavesTheOthersWhereTheyAreScrolledTo) {
  sheet.SetFrozenCols(1);
  sheet.view().SetSize({280, 220}, 1.0);
  sheet.view().ScrollTo({60, 0});
  DragTo(Middle(3, 1), Middle(6, 1));
  EXPECT_FALSE(mouse.WantsAutoScroll());
  mouse.AutoScroll();
  EXPECT_EQ(sheet.view().geometry().scroll().x, 60);
  EXPECT_EQ(Selected(), (CellRange{3, 1, 7, 2}));
  mouse.Cancel();
  // Seen from the scrolling part, the frozen columns are beyond its edge.
  DragTo(Middle(3, 3), Middle(3, 1));
  EXPECT_TRUE(mouse.WantsAutoScroll());
  for (int tick = 0; tick < 10; ++tick) mouse.AutoScroll();
  EXPECT_EQ(sheet.view().geometry().scroll().x, 0);
}

TEST_F(Input, ACaptionDraggedBeyondTheEdgeScrollsToWhereItIsToGo) {
  sheet.view().SetSize({230, 220}, 1.0);
  DragTo(Middle(0, 1), {260, 10});
  EXPECT_TRUE(mouse.WantsAutoScroll());
  for (int tick = 0; tick < 20; ++tick) mouse.AutoScroll();
  EXPECT_EQ(sheet.view().geometry().scroll(), (ScrollPosition{200, 0}));
  EXPECT_EQ(sheet.view().drop_column(), 5);
  mouse.Release({MouseButton::kLeft, kNone, {260, 10}});
  EXPECT_NE(listener.Take().find("moved 1 4"), std::string::npos);
  EXPECT_FALSE(mouse.WantsAutoScroll());
}

TEST_F(Input, AClickOnAnEdgeThatResizesNothingTellsNothing) {
  const Rect caption = sheet.view().geometry().CellRect(0, 2);
  Click({caption.right() - 1, caption.y + 5});
  EXPECT_EQ(listener.Take().find("resized"), std::string::npos);
}

}  // namespace
}  // namespace stockbook::sheet
