// SPDX-License-Identifier: MIT
// Extreme sizes, positions and scales, and gestures that are cancelled.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "sheet/columns.h"
#include "sheet/input/mouse.h"
#include "sheet/outline/row_states.h"
#include "sheet/paint/painter.h"
#include "sheet/paint/snapshot.h"
#include "sheet/recording_canvas.h"
#include "stockbook/platform/error.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::sheet {
namespace {

using test::Numbers;
using test::Periods;
using test::Together;

// A fixed column of 30 pixels and two of 100; rows of 20; ten of them below the captions.
class Limits : public ::testing::Test {
 protected:
  Limits() {
    sheet.LoadColumns(Together(Periods(1000, 5), Numbers(1000)), 1);
    sheet.SetColWidth(0, 450);
    for (int column = 1; column < 3; ++column) sheet.SetColWidth(column, 1500);
    sheet.view().SetSize({430, 220}, 1.0);
  }
  ~Limits() override {
    EXPECT_TRUE(sheet.CheckInvariants());
    EXPECT_TRUE(mouse.CheckInvariants());
  }
  static MouseEvent At(int x, int y) { return {MouseButton::kLeft, {}, {x, y}}; }

  GridSheet sheet;
  Mouse mouse{sheet.view()};
};

TEST_F(Limits, AScaleThatIsNoneLeavesTheOneThereWas) {
  sheet.view().SetSize({430, 220}, 1.5);
  for (const double scale : {0.0, -1.0, std::nan(""), HUGE_VAL}) {
    sheet.view().SetSize({430, 220}, scale);
    EXPECT_EQ(sheet.view().scale(), 1.5);
  }
  sheet.view().SetSize({430, 220}, 1e300);
  EXPECT_GT(sheet.view().geometry().ContentHeight(), 0);
}

TEST_F(Limits, ScrollingBeyondAllMeasureEndsAtTheEdges) {
  sheet.view().ScrollBy(INT64_MAX, INT64_MAX);
  EXPECT_EQ(sheet.view().geometry().scroll(), sheet.view().geometry().max_scroll());
  sheet.view().ScrollBy(INT64_MIN, INT64_MIN);
  EXPECT_EQ(sheet.view().geometry().scroll(), ScrollPosition());
}

TEST_F(Limits, TheMouseMayBeAnywhere) {
  for (const int far : {INT_MIN, INT_MAX}) {
    for (const Point from : {Point{129, 10}, Point{10, 59}, Point{80, 10}, Point{200, 100}}) {
      mouse.Press(At(from.x, from.y));
      mouse.Move(At(far, far));
      mouse.AutoScroll();
      mouse.Release(At(far, far));
      mouse.Press(At(far, far));
      mouse.DoubleClick(At(far, far));
      mouse.Release(At(far, far));
    }
    EXPECT_TRUE(sheet.CheckInvariants());
  }
}

TEST_F(Limits, MoreRowsThanAGridHasAreRefused) {
  constexpr int kNearlyAll = (1 << 30) - 10;
  sheet.SetRows(kNearlyAll);
  sheet.SetFixedRows(kNearlyAll);
  EXPECT_THROW(sheet.LoadColumns(Together(Numbers(100)), 1), platform::Error);
  EXPECT_EQ(sheet.Rows(), kNearlyAll);
  sheet.LoadColumns(Together(Numbers(10)), 1);
  EXPECT_EQ(sheet.Rows(), 1 << 30);
  EXPECT_THROW(sheet.AddItem("", sheet.Rows()), platform::Error);
  sheet.SetRows(1 << 30);
  EXPECT_THROW(sheet.AddItem("", sheet.Rows()), platform::Error);
  sheet.SetRows(10);
}

TEST_F(Limits, ACancelledResizeLeavesTheRowToTheHeightOfAllRows) {
  const size_t runs = sheet.states().RunCount();
  mouse.Press(At(10, 59));
  mouse.Move(At(10, 90));
  EXPECT_NE(sheet.RowHeight(2), 300);
  mouse.Cancel();
  EXPECT_EQ(sheet.states().RunCount(), runs);
  sheet.SetRowHeightMax(200);
  mouse.Press(At(10, 13 + 13 + 12));
  mouse.Move(At(10, 60));
  mouse.Cancel();
  sheet.SetRowHeightMax(0);
  EXPECT_EQ(sheet.RowHeight(2), 300);
}

TEST_F(Limits, FewerFixedRowsLeaveASheetAtItsTop) {
  sheet.SetFixedRows(3);
  EXPECT_EQ(sheet.view().geometry().scroll().y, 0);
  sheet.SetFixedRows(1);
  EXPECT_EQ(sheet.view().geometry().scroll().y, 0);
  EXPECT_EQ(sheet.TopRow(), 1);
}

TEST_F(Limits, FixedRowsBelowTheViewCostNothingToPaint) {
  sheet.SetFixedRows(900);
  EXPECT_TRUE(sheet.view().geometry().BodyRect().IsEmpty());
  const Snapshot snapshot = Snapshot::Of(sheet.view());
  size_t cells = 0;
  for (const SnapshotPane& pane : snapshot.panes()) cells += pane.content.size();
  EXPECT_EQ(cells, 11U * 3U);
}

TEST_F(Limits, ASheetAtItsTopStaysThereWhenRowsComeInThere) {
  sheet.AddItem("new", 1);
  sheet.AddItem("newer", 1);
  EXPECT_EQ(sheet.TopRow(), 1);
  EXPECT_EQ(sheet.view().geometry().scroll().y, 0);
}

TEST_F(Limits, AScrolledSheetKeepsItsTopRowWhenRowsComeInAboveIt) {
  sheet.SetTopRow(500);
  const std::string top = sheet.TextMatrix(500, 2);
  sheet.AddItem("new", 1);
  sheet.AddItem("just above", 501);
  EXPECT_EQ(sheet.TopRow(), 502);
  EXPECT_EQ(sheet.TextMatrix(sheet.TopRow(), 2), top);
}

TEST_F(Limits, GroupingKeepsTheTopRow) {
  sheet.SetTopRow(500);
  const std::string top = sheet.TextMatrix(500, 2);
  sheet.GroupBy(1, 2, "%s");
  EXPECT_EQ(sheet.TextMatrix(sheet.TopRow(), 2), top);
  sheet.SetTopRow(1);
  EXPECT_EQ(sheet.TopRow(), 1);
}

TEST_F(Limits, TheFrameOfACurrentCellThatIsVeryLowStaysWithinIt) {
  sheet.SetRowHeight(2, 30);
  sheet.Select(2, 1);
  test::RecordingCanvas canvas;
  Paint(Snapshot::Of(sheet.view()), canvas);
  const Rect cell = sheet.view().geometry().CellRect(2, 1);
  ASSERT_EQ(cell.height, 2);
  for (const auto& fill : canvas.fills) {
    if (fill.colour != sheet.appearance().accent) continue;
    EXPECT_TRUE(fill.rect.IsEmpty() || cell.Contains(fill.rect)) << fill.rect.y << ' ' << fill.rect.height;
  }
}

}  // namespace
}  // namespace stockbook::sheet
