// SPDX-License-Identifier: MIT
#include "sheet/print/page_plan.h"

#include <gtest/gtest.h>

#include "sheet/columns.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::sheet {
namespace {

using test::Numbers;
using test::Together;

// Thirty rows of 20 pixels below a caption of the same height, two columns of 100 after a fixed one of 30.
class Pages : public ::testing::Test {
 protected:
  Pages() {
    sheet.LoadColumns(Together(Numbers(30), Numbers(30)), 1);
    sheet.SetRowHeight(-1, 300);
    sheet.SetColWidth(0, 450);
    for (int column = 1; column < 3; ++column) sheet.SetColWidth(column, 1500);
  }

  // A plan for pages with room for that many rows below the caption.
  PagePlan PlanOf(int rows, double width = 1000, const PageSetup& setup = {}) {
    PaperLayout paper(sheet, 1);
    return {paper, {width, 20.0 + 20.0 * rows}, setup};
  }
  // Every visible row is on exactly one page, in order, and no page is empty.
  void ExpectEveryRowOnce(const PagePlan& plan) const {
    int next = sheet.FixedRows();
    for (int page = 0; page < plan.PageCount(); ++page) {
      const Span rows = plan.At(page).rows;
      for (; next < rows.first; ++next) EXPECT_TRUE(sheet.RowHidden(next)) << next;
      bool shows = false;
      for (; next < rows.last; ++next) shows = shows || !sheet.RowHidden(next);
      EXPECT_TRUE(shows) << page;
    }
    for (; next < sheet.Rows(); ++next) EXPECT_TRUE(sheet.RowHidden(next)) << next;
  }

  GridSheet sheet;
};

TEST_F(Pages, TakeAsManyRowsAsFit) {
  const PagePlan plan = PlanOf(10);
  ASSERT_EQ(plan.PageCount(), 3);
  EXPECT_EQ(plan.At(1).rows, (Span{11, 21}));
  ExpectEveryRowOnce(plan);
}

TEST_F(Pages, LeaveNoneOfSeveralNestedNodesAtTheirFoot) {
  for (int row = 1; row <= 30; ++row) sheet.SetRowOutlineLevel(row, 3);
  for (const int level : {0, 1, 2}) {
    sheet.SetIsSubtotal(8 + level, true);
    sheet.SetRowOutlineLevel(8 + level, level);
  }
  for (int rows = 8; rows <= 10; ++rows) {
    const PagePlan plan = PlanOf(rows);
    EXPECT_EQ(plan.At(0).rows, (Span{1, 8})) << rows;
    ExpectEveryRowOnce(plan);
  }
  const PagePlan small = PlanOf(2);
  ExpectEveryRowOnce(small);
  EXPECT_EQ(small.At(4).rows, (Span{8, 10})) << "a page that nodes alone fill";
}

TEST_F(Pages, AreNeverEmptyWhereARowIsHigherThanAPage) {
  sheet.SetRowHidden(1, true);
  sheet.SetRowHeight(2, 15 * 500);
  sheet.SetRowHidden(30, true);
  const PagePlan plan = PlanOf(10);
  EXPECT_EQ(plan.At(0).rows, (Span{2, 3}));
  EXPECT_EQ(plan.PageCount(), 4);
  ExpectEveryRowOnce(plan);
}

TEST_F(Pages, PartColumnsWhereTheyDoNotFit) {
  const PagePlan plan = PlanOf(10, 90);
  EXPECT_EQ(plan.zoom(), 0.6);
  ASSERT_EQ(plan.PageCount(), 4);
  EXPECT_EQ(plan.At(0).columns, (Span{1, 2}));
  EXPECT_EQ(plan.At(1).columns, (Span{2, 3}));
  sheet.SetColHidden(1, true);
  sheet.SetColHidden(2, true);
  EXPECT_EQ(PlanOf(10, 90).PageCount(), 3);
}

TEST_F(Pages, FitTheWidthAsFarAsTheSetupAllows) {
  PageSetup setup;
  setup.least_zoom = 0.3;
  const PagePlan plan = PlanOf(10, 115, setup);
  EXPECT_DOUBLE_EQ(plan.zoom(), 0.5) << "230 pixels of columns";
  EXPECT_EQ(plan.At(0).columns, (Span{1, 3}));
  EXPECT_EQ(plan.PageCount(), 2) << "twice as many rows";
}

TEST_F(Pages, MayStandBesideEachOtherAndRepeatAColumn) {
  sheet.SetCols(6);
  for (int column = 3; column < 6; ++column) sheet.SetColWidth(column, 1500);
  PageSetup setup;
  setup.pages_wide = 2;
  setup.least_zoom = 0.3;
  setup.repeated_column = 1;
  const PagePlan plan = PlanOf(10, 300, setup);
  // The fixed column and the repeated one take 130, two others 200.
  EXPECT_NEAR(plan.zoom(), 300.0 / 330, 0.01);
  EXPECT_EQ(plan.At(0).columns, (Span{2, 4}));
  EXPECT_EQ(plan.At(1).columns, (Span{4, 6}));
  EXPECT_EQ(plan.At(0).rows, plan.At(1).rows);
  setup.pages_wide = 4;
  EXPECT_EQ(PlanOf(10, 300, setup).zoom(), 1) << "three pages are enough";
}

TEST_F(Pages, LeaveRoomForWhatIsCarriedWhereThereAreSeveral) {
  PageSetup setup;
  setup.carried_columns = {2};
  const PagePlan plan = PlanOf(10, 1000, setup);
  EXPECT_EQ(plan.carried_height(), 20);
  EXPECT_EQ(plan.At(0).rows, (Span{1, 9}));
  EXPECT_EQ(plan.PageCount(), 4);
  ExpectEveryRowOnce(plan);
  EXPECT_EQ(PlanOf(40, 1000, setup).carried_height(), 0) << "one page carries nothing";
}

TEST_F(Pages, AreFoundByTheirRows) {
  const PagePlan plan = PlanOf(10, 90);
  EXPECT_EQ(plan.PageOfRow(1), 0);
  EXPECT_EQ(plan.PageOfRow(16), 0);
  EXPECT_EQ(plan.At(0).rows, plan.At(1).rows);
  for (int row = 1; row <= 30; ++row) {
    const Span rows = plan.At(plan.PageOfRow(row)).rows;
    EXPECT_TRUE(rows.first <= row && row < rows.last) << row;
  }
  EXPECT_FALSE(plan.GoesOnBefore(1));
  EXPECT_TRUE(plan.GoesOnAfter(1));
  EXPECT_TRUE(plan.GoesOnBefore(plan.PageCount() - 1));
  EXPECT_FALSE(plan.GoesOnAfter(plan.PageCount() - 1));
}

}  // namespace
}  // namespace stockbook::sheet
