// SPDX-License-Identifier: MIT
#include "stockbook/sheet/geometry/geometry.h"

#include <gtest/gtest.h>

#include <random>

#include "sheet/columns.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::sheet {
namespace {

using test::Numbers;
using test::Periods;
using test::Together;

// Every visible cell is found at the corners of its visible part.
void ExpectCellsToBeHit(const GridSheet& sheet) {
  const Geometry geometry = sheet.view().geometry();
  ASSERT_TRUE(geometry.CheckInvariants());
  const Span rows = geometry.RowsWithin(0, geometry.view().height);
  const Span columns = geometry.ColumnsWithin(0, geometry.view().width);
  const auto expect = [&](int row, int column) {
    const Rect seen = geometry.VisibleCellRect(row, column);
    if (seen.IsEmpty()) return;
    for (const Point corner : {Point{seen.x, seen.y}, Point{seen.right() - 1, seen.y}, Point{seen.x, seen.bottom() - 1},
                               Point{seen.right() - 1, seen.bottom() - 1}}) {
      ASSERT_EQ(geometry.CellAt(corner), (CellPosition{row, column})) << corner.x << ' ' << corner.y;
    }
  };
  for (int column = 0; column < sheet.Cols(); ++column) {
    for (int row = 0; row < sheet.FixedRows(); ++row) expect(row, column);
    for (int row = rows.first; row < rows.last; ++row) expect(row, column);
    const bool within = column >= columns.first && column < columns.last;
    const Rect body = geometry.VisibleCellRect(std::min(rows.first, sheet.Rows() - 1), column);
    if (column >= geometry.pinned().columns && !body.IsEmpty()) {
      ASSERT_TRUE(within) << column;
    }
  }
}

TEST(Geometry, FindsEverySeenCellAtItsOwnPlaceAtAnyScrollPositionAndScale) {
  std::mt19937 random(5);
  const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
    GridSheet sheet;
    sheet.LoadColumns(
        Together(Periods(3000, 12), Numbers(3000), Numbers(3000), Numbers(3000), Numbers(3000), Numbers(3000)), 1);
    sheet.GroupBy(1, 2, "%s");
    sheet.SetColWidth(0, 300);
    for (int round = 0; round < 150; ++round) {
      switch (below(6)) {
        case 0:
          sheet.SetRowHeight(1 + below(sheet.Rows() - 1), below(900));
          break;
        case 1:
          sheet.SetRowHidden(1 + below(sheet.Rows() - 1), true);
          break;
        case 2:
          sheet.SetColHidden(1 + below(6), below(2) == 0);
          break;
        case 3:
          sheet.SetFrozenCols(below(4));
          break;
        case 4: {
          const int node = sheet.NextSubtotal(below(sheet.Rows()));
          if (node >= 0) sheet.SetIsCollapsed(node, below(3) > 0);
          break;
        }
        default:
          sheet.SetColWidth(below(7), 100 + below(3000));
      }
      sheet.view().SetSize({1 + below(900), 1 + below(700)}, scale);
      const ScrollPosition most = sheet.view().geometry().max_scroll();
      sheet.view().ScrollTo({below(static_cast<int>(most.x) + 2), below(static_cast<int>(most.y) + 2)});
      ExpectCellsToBeHit(sheet);
      if (HasFatalFailure()) FAIL() << "round " << round << " at scale " << scale;
    }
  }
}

TEST(Geometry, GivesNoCellOutsideOfTheViewAndOfTheCells) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Numbers(2)), 1);
  sheet.view().SetSize({500, 400}, 1.0);
  const Geometry geometry = sheet.view().geometry();
  EXPECT_EQ(geometry.CellAt({-1, 5}), CellPosition());
  EXPECT_EQ(geometry.CellAt({5, 400}), CellPosition());
  EXPECT_EQ(geometry.CellAt({5, 399}), (CellPosition{-1, 0}));
  EXPECT_EQ(geometry.CellAt({499, 5}), (CellPosition{0, -1}));
  EXPECT_EQ(geometry.CellAt({63, 19}), (CellPosition{0, 0}));
  EXPECT_EQ(geometry.CellAt({64, 20}), (CellPosition{1, 1}));
}

TEST(Geometry, TellsTheRowsInView) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Numbers(100)), 1);
  sheet.view().SetSize({500, 210}, 1.0);
  EXPECT_EQ(sheet.TopRow(), 1);
  EXPECT_EQ(sheet.BottomRow(), 9);
  EXPECT_TRUE(sheet.RowIsVisible(9));
  EXPECT_FALSE(sheet.RowIsVisible(10));
  sheet.SetTopRow(50);
  EXPECT_EQ(sheet.TopRow(), 50);
  EXPECT_EQ(sheet.BottomRow(), 58);
  EXPECT_FALSE(sheet.RowIsVisible(49));
  EXPECT_TRUE(sheet.RowIsVisible(0));
  sheet.SetRowHidden(52, true);
  EXPECT_FALSE(sheet.RowIsVisible(52));
  EXPECT_EQ(sheet.BottomRow(), 59);
  sheet.SetTopRow(100);
  EXPECT_EQ(sheet.BottomRow(), 100);
  EXPECT_LT(sheet.TopRow(), 93);
}

TEST(Geometry, MovingTheTopRowByTheDifferenceMakesALowerRowTheLastInView) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Numbers(1000)), 1);
  sheet.view().SetSize({500, 333}, 1.5);
  for (const int row : {40, 41, 77, 500, 1000}) {
    if (row > sheet.BottomRow()) sheet.SetTopRow(sheet.TopRow() + row - sheet.BottomRow());
    EXPECT_EQ(sheet.BottomRow(), row);
    EXPECT_TRUE(sheet.RowIsVisible(row));
  }
}

TEST(Geometry, ScrollsColumnsBesideTheFrozenOnes) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Numbers(5), Numbers(5), Numbers(5), Numbers(5)), 1);
  for (int column = 0; column < 5; ++column) sheet.SetColWidth(column, 1500);
  sheet.view().SetSize({320, 200}, 1.0);
  sheet.SetFrozenCols(1);
  sheet.view().ScrollTo({1000, 0});
  const Geometry geometry = sheet.view().geometry();
  EXPECT_EQ(geometry.scroll().x, 180);
  EXPECT_EQ(geometry.CellRect(1, 1).x, 100);
  EXPECT_EQ(geometry.CellRect(1, 4).right(), 320);
  EXPECT_EQ(sheet.LeftCol(), 3);
  sheet.SetLeftCol(2);
  EXPECT_EQ(sheet.view().geometry().scroll().x, 0);
  EXPECT_EQ(sheet.LeftCol(), 2);
}

TEST(Geometry, KeepsTheTopRowWhenHeightsScaleOrRowsAboveChange) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Numbers(1000)), 1);
  sheet.view().SetSize({500, 400}, 1.0);
  sheet.SetTopRow(500);
  sheet.SetRowHeight(-1, 450);
  EXPECT_EQ(sheet.TopRow(), 500);
  sheet.view().SetSize({500, 400}, 2.0);
  EXPECT_EQ(sheet.TopRow(), 500);
  sheet.SetRowHidden(10, true);
  EXPECT_EQ(sheet.TopRow(), 500);
  sheet.AddItem("", 1);
  EXPECT_EQ(sheet.TopRow(), 501);
  sheet.RemoveItem(1);
  EXPECT_EQ(sheet.TopRow(), 500);
}

TEST(Geometry, CollapsingAllAndExpandingAllComesBackToTheSamePlace) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Periods(5000, 20), Numbers(5000)), 1);
  sheet.GroupBy(1, 2, "%s");
  sheet.view().SetSize({500, 400}, 1.0);
  sheet.view().ScrollTo({0, 54321});
  const auto set_all = [&](bool collapsed) {
    for (int row = sheet.NextSubtotal(1); row >= 0; row = sheet.NextSubtotal(row + 1))
      sheet.SetIsCollapsed(row, collapsed);
  };
  set_all(true);
  EXPECT_EQ(sheet.view().geometry().scroll().y, 20);
  set_all(false);
  EXPECT_EQ(sheet.view().geometry().scroll().y, 54321);
}

TEST(Geometry, ScrollsAsLittleAsShowsTheWholeCell) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Numbers(1000), Numbers(1000), Numbers(1000)), 1);
  for (int column = 1; column < 4; ++column) sheet.SetColWidth(column, 1500);
  sheet.view().SetSize({300, 220}, 1.0);
  EXPECT_EQ(sheet.view().geometry().ToShow(5, 1), ScrollPosition());
  EXPECT_EQ(sheet.view().geometry().ToShow(11, 1), (ScrollPosition{0, 20}));
  EXPECT_EQ(sheet.view().geometry().ToShow(1, 3), (ScrollPosition{64, 0}));
  sheet.view().ScrollTo({64, 4000});
  EXPECT_EQ(sheet.view().geometry().ToShow(100, 1), (ScrollPosition{0, 1980}));
  sheet.SetColWidth(2, 6000);
  EXPECT_EQ(sheet.view().geometry().ToShow(300, 2).x, 100);
}

}  // namespace
}  // namespace stockbook::sheet
