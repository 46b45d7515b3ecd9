// SPDX-License-Identifier: MIT
#include "sheet/print/page_plan.h"

#include <gtest/gtest.h>

#include "sheet/columns.h"
#include "sheet/grid_sheet.h"

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
  PagePlan PlanOf(int rows, double width = 1000) {
    PaperLayout paper(sheet, 1);
    return {paper, {width, 20.0 + 20.0 * rows}};
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

}  // namespace
}  // namespace stockbook::sheet
