// SPDX-License-Identifier: MIT
// An observer that changes the sheet while it is being called.
#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "sheet/columns.h"
#include "sheet/sheet_in_view.h"

namespace stockbook::sheet {
namespace {

using test::Numbers;
using test::Together;

// Performs its action once, in the next call it receives.
class Meddler : public platform::GridObserver, public test::IdleViewer {
 public:
  platform::Verdict BeforeRowColChange(CellPosition, CellPosition) override {
    Do(before_move);
    return platform::Verdict::kAllow;
  }
  void AfterRowColChange(CellPosition, CellPosition) override { Do(after_move); }
  platform::Verdict BeforeUserResize(int, int) override {
    Do(before_resize);
    return platform::Verdict::kAllow;
  }
  void AfterUserResize(int row, int column) override { resized = {row, column}; }
  void AfterMoveColumn(int, int) override { ++moved_columns; }
  void Damaged(const Rect&) override { ++damages; }

  std::function<void()> before_move;
  std::function<void()> after_move;
  std::function<void()> before_resize;
  CellPosition resized;
  int moved_columns = 0;
  int damages = 0;

 private:
  static void Do(std::function<void()>& what) {
    if (what) std::exchange(what, nullptr)();
  }
};

class Observer : public test::SheetInView {
 protected:
  Observer() : SheetInView(Together(Numbers(100), Numbers(100), Numbers(100), Numbers(100))) {
    sheet.SetObserver(&meddler);
    sheet.view().SetViewer(&meddler);
  }
  ~Observer() override {
    EXPECT_TRUE(sheet.CheckInvariants());
    EXPECT_TRUE(mouse.CheckInvariants());
    sheet.SetObserver(nullptr);
    sheet.view().SetViewer(nullptr);
  }
  static MouseEvent At(int x, int y, MouseButton button = MouseButton::kLeft) { return {button, {}, {x, y}}; }

  Meddler meddler;
};

TEST_F(Observer, MayTakeTheColumnAwayThatItIsAskedToResize) {
  meddler.before_resize = [&] { sheet.SetCols(2); };
  EXPECT_NO_THROW(mouse.Press(At(229, 10)));
  mouse.Move(At(300, 10));
  mouse.Release(At(300, 10));
  EXPECT_EQ(meddler.resized, CellPosition());
  EXPECT_EQ(sheet.ColWidth(1), 1500);
}

TEST_F(Observer, MayTakeTheRowAwayThatItIsAskedToResize) {
  meddler.before_resize = [&] { sheet.SetRows(2); };
  EXPECT_NO_THROW(mouse.Press(At(10, 79)));
  mouse.Move(At(10, 99));
  mouse.Release(At(10, 99));
  EXPECT_EQ(meddler.resized, CellPosition());
  EXPECT_EQ(sheet.RowHeight(1), 300);
}

TEST_F(Observer, MayGoWhileItIsAskedWhetherAColumnMayBeFitted) {
  meddler.before_resize = [&] { sheet.SetObserver(nullptr); };
  mouse.DoubleClick(At(129, 10));
  EXPECT_FALSE(meddler.before_resize) << "it was asked";
  EXPECT_EQ(meddler.resized, CellPosition());
}

TEST_F(Observer, HearsNothingOfAResizedColumnThatHasGone) {
  mouse.Press(At(429, 10));
  mouse.Move(At(400, 10));
  sheet.SetCols(3);
  mouse.Release(At(400, 10));
  EXPECT_EQ(meddler.resized, CellPosition());
}

TEST_F(Observer, MayTakeRowsAndColumnsAwayBeforeTheCurrentCellMoves) {
  sheet.SelectRange(90, 4, 95, 2);
  meddler.before_move = [&] {
    sheet.SetRows(20);
    sheet.SetCols(3);
  };
  keyboard.Press({Key::kDown, {}});
  EXPECT_EQ(sheet.view().selection().current, (CellPosition{19, 2}));
}

TEST_F(Observer, MayEmptyTheSheetAfterTheCurrentCellMoved) {
  meddler.after_move = [&] {
    sheet.SetRows(0);
    sheet.SetCols(0);
  };
  mouse.Press(At(240, 100));
  mouse.Move(At(240, 300));
  mouse.AutoScroll();
  mouse.Release(At(240, 300));
  EXPECT_EQ(sheet.view().selection(), Selection());
  EXPECT_FALSE(keyboard.Press({Key::kDown, {}}));
}

TEST_F(Observer, FindsTheMouseOverNothingWhereItsCellHasGone) {
  mouse.Move(At(380, 150));
  EXPECT_EQ(sheet.MouseRow(), 7);
  EXPECT_EQ(sheet.MouseCol(), 4);
  sheet.SetRows(3);
  sheet.SetCols(2);
  EXPECT_EQ(sheet.MouseRow(), -1);
  EXPECT_EQ(sheet.MouseCol(), -1);
}

TEST_F(Observer, HearsOfOneMoveThoughAnotherButtonWentUpMeanwhile) {
  mouse.Press(At(80, 10));
  mouse.Move(At(300, 10));
  EXPECT_EQ(sheet.view().drop_column(), 4);
  mouse.Release(At(300, 10, MouseButton::kRight));
  EXPECT_EQ(sheet.view().drop_column(), 4);
  mouse.Release(At(300, 10));
  EXPECT_EQ(sheet.view().drop_column(), -1);
  EXPECT_EQ(meddler.moved_columns, 1);
}

TEST_F(Observer, HearsOfAResizeThoughAnotherButtonWentUpMeanwhile) {
  mouse.Press(At(229, 10));
  mouse.Move(At(250, 10));
  mouse.Release(At(250, 10, MouseButton::kRight));
  mouse.Release(At(250, 10));
  EXPECT_EQ(meddler.resized, (CellPosition{-1, 2}));
}

TEST_F(Observer, SeesTheDropMarkStayWithinTheColumnsThatAreLeft) {
  mouse.Press(At(80, 10));
  mouse.Move(At(420, 10));
  EXPECT_EQ(sheet.view().drop_column(), 5);
  sheet.SetCols(3);
  EXPECT_EQ(sheet.view().drop_column(), 3);
  mouse.Release(At(420, 10));
}

}  // namespace
}  // namespace stockbook::sheet
