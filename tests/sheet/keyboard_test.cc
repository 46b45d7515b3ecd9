// SPDX-License-Identifier: MIT
#include <string>

#include "sheet/input_fixture.h"
#include "sheet/outline/row_states.h"

namespace stockbook::sheet {
namespace {

using test::CellRange;
using test::Input;
using test::kControl;
using test::kShift;
using test::Numbers;
using test::Together;

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

}  // namespace
}  // namespace stockbook::sheet
