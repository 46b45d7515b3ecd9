// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "sheet/columns.h"
#include "sheet/sheet_in_view.h"

namespace stockbook::sheet {
namespace {

using platform::CellRange;
using test::Numbers;
using test::Periods;
using test::Together;

constexpr Modifiers kNone{};
constexpr Modifiers kShift{Modifiers::kShift};
constexpr Modifiers kControl{Modifiers::kControl};

// Keeps what the sheet told, as words.
class Listener : public platform::GridObserver, public SheetViewer {
 public:
  platform::Verdict BeforeRowColChange(CellPosition from, CellPosition to) override {
    Note("before", from.row, from.column, to.row, to.column);
    return verdict;
  }
  void AfterRowColChange(CellPosition from, CellPosition to) override {
    Note("after", from.row, from.column, to.row, to.column);
  }
  void MouseDown(const platform::GridMouseEvent& event) override {
    Note("down", static_cast<int>(event.button), event.modifiers.bits, Pixels(event.x_twips), Pixels(event.y_twips));
  }
  void MouseUp(const platform::GridMouseEvent& event) override {
    Note("up", static_cast<int>(event.button), event.modifiers.bits, Pixels(event.x_twips), Pixels(event.y_twips));
  }
  void DoubleClick() override { told += "double;"; }
  platform::Verdict BeforeUserResize(int row, int column) override {
    told += "resize? " + std::to_string(row) + " " + std::to_string(column) + ";";
    return verdict;
  }
  void AfterUserResize(int row, int column) override {
    told += "resized " + std::to_string(row) + " " + std::to_string(column) + ";";
  }
  void AfterMoveColumn(int column, int position) override {
    told += "moved " + std::to_string(column) + " " + std::to_string(position) + ";";
  }
  void Damaged(const Rect& area) override {
    ++damages;
    damaged = area;
  }
  void ScrollChanged() override { ++scrolls; }
  void CursorChanged(Cursor now) override { cursor = now; }

  std::string Take() { return std::exchange(told, {}); }

  platform::Verdict verdict = platform::Verdict::kAllow;
  std::string told;
  int damages = 0;
  int scrolls = 0;
  Rect damaged;
  Cursor cursor = Cursor::kDefault;

 private:
  static int Pixels(float twips) { return static_cast<int>(twips / 15); }
  void Note(const char* what, int a, int b, int c, int d) {
    told += std::string(what) + " " + std::to_string(a) + " " + std::to_string(b) + " " + std::to_string(c) + " " +
            std::to_string(d) + ";";
  }
};

class Input : public test::SheetInView {
 protected:
  Input() : SheetInView(Together(Periods(1000, 5), Numbers(1000), Numbers(1000), Numbers(1000))) {
    sheet.SetObserver(&listener);
    sheet.view().SetViewer(&listener);
  }
  ~Input() override {
    sheet.SetObserver(nullptr);
    sheet.view().SetViewer(nullptr);
  }

  bool Press(Key key, Modifiers modifiers = kNone) { return keyboard.Press({key, modifiers}); }
  CellPosition Current() const { return sheet.view().selection().current; }
  CellRange Selected() const { return sheet.view().selection().Range(); }
  Point Middle(int row, int column) const {
    const Rect cell = sheet.view().geometry().CellRect(row, column);
    return {cell.x + cell.width / 2, cell.y + cell.height / 2};
  }
  void Click(Point at, Modifiers modifiers = kNone) {
    mouse.Press({MouseButton::kLeft, modifiers, at});
    mouse.Release({MouseButton::kLeft, modifiers, at});
  }
  void DragTo(Point from, Point to) {
    mouse.Press({MouseButton::kLeft, kNone, from});
    mouse.Move({MouseButton::kLeft, kNone, {(from.x + to.x) / 2, (from.y + to.y) / 2}});
    mouse.Move({MouseButton::kLeft, kNone, to});
  }
  void Drag(Point from, Point to) {
    DragTo(from, to);
    mouse.Release({MouseButton::kLeft, kNone, to});
  }

  Listener listener;
};

TEST_F(Input, ArrowsMoveTheCurrentCellOverShownCells) {
  sheet.SetColHidden(2, true);
  sheet.SetRowHidden(2, true);
  EXPECT_TRUE(Press(Key::kDown));
  EXPECT_EQ(Current(), (CellPosition{3, 1}));
  Press(Key::kRight);
  EXPECT_EQ(Current(), (CellPosition{3, 3}));
  Press(Key::kLeft);
  Press(Key::kUp);
  EXPECT_EQ(Current(), (CellPosition{1, 1}));
  Press(Key::kUp);
  Press(Key::kLeft);
  EXPECT_EQ(Current(), (CellPosition{1, 1}));
}

TEST_F(Input, ACurrentCellInAHiddenColumnComesIntoSightWithTheFirstKey) {
  sheet.SetColHidden(1, true);
  Press(Key::kDown);
  EXPECT_EQ(Current(), (CellPosition{2, 2}));
  sheet.Select(2, 4);
  sheet.SetColHidden(4, true);
  Press(Key::kUp);
  EXPECT_EQ(Current(), (CellPosition{1, 3}));
}

TEST_F(Input, HomeEndAndTheirControlFormsGoToTheEdges) {
  Press(Key::kEnd);
  EXPECT_EQ(Current(), (CellPosition{1, 4}));
  Press(Key::kEnd, kControl);
  EXPECT_EQ(Current(), (CellPosition{1000, 4}));
  EXPECT_EQ(sheet.BottomRow(), 1000);
  Press(Key::kHome);
  EXPECT_EQ(Current(), (CellPosition{1000, 1}));
  Press(Key::kHome, kControl);
  EXPECT_EQ(Current(), (CellPosition{1, 1}));
  EXPECT_EQ(sheet.TopRow(), 1);
}

TEST_F(Input, PagesMoveByTheRowsThatAreSeen) {
  Press(Key::kPageDown);
  EXPECT_EQ(Current().row, 10);
  Press(Key::kPageDown);
  EXPECT_EQ(Current().row, 19);
  EXPECT_EQ(sheet.BottomRow(), 19);
  Press(Key::kPageUp);
  Press(Key::kPageUp);
  Press(Key::kPageUp);
  EXPECT_EQ(Current().row, 1);
  sheet.SetRowHeight(1, 9000);
  Press(Key::kPageDown);
  EXPECT_EQ(Current().row, 2);
  Press(Key::kEnd, kControl);
  Press(Key::kPageDown);
  EXPECT_EQ(Current().row, 1000);
}

TEST_F(Input, APageDownAndAPageUpComeBackToTheSameRow) {
  for (const int height : {201, 210, 219, 220}) {
    sheet.view().SetSize({430, height}, 1.0);
    sheet.Select(50, 2);
    Press(Key::kPageDown);
    EXPECT_GT(Current().row, 50);
    Press(Key::kPageUp);
    EXPECT_EQ(Current(), (CellPosition{50, 2})) << height;
  }
}

TEST_F(Input, ShiftExtendsTheSelectionAndLeavesTheCurrentCell) {
  listener.Take();
  Press(Key::kDown, kShift);
  Press(Key::kRight, kShift);
  EXPECT_EQ(Current(), (CellPosition{1, 1}));
  EXPECT_EQ(Selected(), (CellRange{1, 1, 3, 3}));
  EXPECT_EQ(sheet.RowSel(), 2);
  EXPECT_EQ(sheet.ColSel(), 2);
  EXPECT_EQ(listener.Take(), "");
  Press(Key::kDown);
  EXPECT_EQ(Selected(), (CellRange{2, 1, 3, 2}));
  Press(Key::kA, kControl);
  EXPECT_EQ(Selected(), (CellRange{1, 1, 1001, 5}));
}

TEST_F(Input, ObserverHearsOfMovesAndMayRefuseThem) {
  Press(Key::kDown);
  EXPECT_EQ(listener.Take(), "before 1 1 2 1;after 1 1 2 1;");
  listener.verdict = platform::Verdict::kRefuse;
  Press(Key::kDown);
  EXPECT_EQ(listener.Take(), "before 2 1 3 1;");
  EXPECT_EQ(Current(), (CellPosition{2, 1}));
  listener.verdict = platform::Verdict::kAllow;
  sheet.Select(5, 3);
  EXPECT_EQ(listener.Take(), "before 2 1 5 3;after 2 1 5 3;");
  sheet.Select(5, 3);
  EXPECT_EQ(listener.Take(), "");
}

TEST_F(Input, KeysThatMeanNothingAreLeftToOthers) {
  EXPECT_FALSE(Press(Key::kOther));
  EXPECT_FALSE(Press(Key::kA));
  EXPECT_FALSE(Press(Key::kPlus));
  EXPECT_FALSE(Press(Key::kDown, Modifiers{Modifiers::kAlt}));
  sheet.SetRows(1);
  EXPECT_FALSE(Press(Key::kDown));
}

TEST_F(Input, LeftAndRightFoldTheNodeInTheTreeColumn) {
  sheet.GroupBy(1, 2, "%s");
  sheet.SetOutlineCol(2);
  sheet.Select(1, 2);
  Press(Key::kLeft);
  EXPECT_TRUE(sheet.IsCollapsed(1));
  Press(Key::kDown);
  EXPECT_EQ(Current().row, 202);
  Press(Key::kUp);
  Press(Key::kRight);
  EXPECT_FALSE(sheet.IsCollapsed(1));
  Press(Key::kRight);
  EXPECT_EQ(Current(), (CellPosition{1, 3}));
  Press(Key::kMinus);
  EXPECT_TRUE(sheet.IsCollapsed(1));
  Press(Key::kPlus);
  EXPECT_FALSE(sheet.IsCollapsed(1));
  Press(Key::kLeft);
  EXPECT_EQ(Current(), (CellPosition{1, 2}));
}

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

TEST_F(Input, PlusAndMinusFoldTheCurrentNodeAndWithControlAllOfThem) {
  sheet.GroupBy(1, 1, "%s");
  sheet.SetOutlineCol(1);
  sheet.Select(1, 3);
  EXPECT_TRUE(Press(Key::kMinus));
  EXPECT_TRUE(sheet.IsCollapsed(1));
  EXPECT_TRUE(Press(Key::kPlus, kShift));
  EXPECT_FALSE(sheet.IsCollapsed(1));
  sheet.Select(700, 3);
  EXPECT_TRUE(Press(Key::kMinus, kControl));
  EXPECT_EQ(sheet.states().TotalShown(), 1 + 5);
  EXPECT_EQ(Current(), (CellPosition{1 + 3 * 201, 3}));
  EXPECT_TRUE(sheet.RowIsVisible(Current().row));
  EXPECT_TRUE(Press(Key::kPlus, kControl));
  EXPECT_EQ(sheet.states().TotalShown(), 1 + 5 + 1000);
  EXPECT_TRUE(sheet.RowIsVisible(Current().row));
  sheet.Select(5, 3);
  EXPECT_FALSE(Press(Key::kPlus));
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

TEST_F(Input, LeftOnALineInTheTreesColumnGoesToItsNode) {
  sheet.GroupBy(1, 1, "%s");
  sheet.SetOutlineCol(1);
  sheet.Select(400, 1);
  Press(Key::kLeft);
  EXPECT_EQ(Current(), (CellPosition{202, 1}));
  sheet.SetOutlineCol(2);
  sheet.Select(400, 2);
  Press(Key::kLeft);
  EXPECT_EQ(Current(), (CellPosition{400, 1}));
}

TEST_F(Input, SpaceSelectsWholeRowsWithShiftAndWholeColumnsWithControl) {
  sheet.SelectRange(3, 2, 5, 3);
  EXPECT_TRUE(Press(Key::kSpace, kShift));
  EXPECT_EQ(Selected(), (CellRange{3, 1, 6, 5}));
  sheet.SelectRange(3, 2, 5, 3);
  EXPECT_TRUE(Press(Key::kSpace, kControl));
  EXPECT_EQ(Selected(), (CellRange{1, 2, 1001, 4}));
  EXPECT_FALSE(Press(Key::kSpace));
}

TEST_F(Input, SelectingAllOrARowBeginsAtTheFirstColumnThatIsShown) {
  sheet.SetColHidden(1, true);
  Press(Key::kA, kControl);
  EXPECT_EQ(Selected(), (CellRange{1, 2, 1001, 5}));
  Click(Middle(3, 0));
  EXPECT_EQ(Selected(), (CellRange{3, 2, 4, 5}));
  sheet.LoadColumns(Together(Numbers(10), Numbers(10), Numbers(10), Numbers(10)), 1);
  EXPECT_EQ(Current(), (CellPosition{1, 2}));
}

TEST_F(Input, AClickOnAnEdgeThatResizesNothingTellsNothing) {
  const Rect caption = sheet.view().geometry().CellRect(0, 2);
  Click({caption.right() - 1, caption.y + 5});
  EXPECT_EQ(listener.Take().find("resized"), std::string::npos);
}

}  // namespace
}  // namespace stockbook::sheet
