// SPDX-License-Identifier: MIT
#include "grid/row_colours.h"

#include <gtest/gtest.h>

#include "stockbook/sheet/grid_sheet.h"
#include "support/faulty_grid.h"

namespace stockbook::grid {
namespace {

class RowColoursOf : public ::testing::Test {
 protected:
  RowColoursOf() {
    sheet_.SetCols(6);
    sheet_.SetRows(4);
    sheet_.SetFrozenCols(2);
    sheet_.SetCellColors({2, 2, 3, 3}, 0x111111, 0x222222);
    sheet_.SetCellColors({2, 3, 3, 4}, 0x333333, 0x444444);
  }
  static constexpr RowColours kSet = {0x333333, 0x444444, 0x111111, 0x222222};
  static constexpr RowColours kBefore = {1, 2, 3, 4};

  sheet::GridSheet sheet_;
};

TEST_F(RowColoursOf, AreThoseOfTheLastFrozenColumnAndTheOneAfterIt) {
  RowColours colours;
  CaptureRowColours(sheet_, sheet_, 2, colours);
  EXPECT_EQ(colours, kSet);
}

TEST_F(RowColoursOf, AreThoseOfTheCurrentRowForANegativeRow) {
  sheet_.Select(2, 3);
  RowColours colours;
  CaptureRowColours(sheet_, sheet_, -1, colours);
  EXPECT_EQ(colours, kSet);
}

TEST_F(RowColoursOf, AreTheGridsOwnWhereNoneAreSet) {
  RowColours colours;
  CaptureRowColours(sheet_, sheet_, 1, colours);
  EXPECT_EQ(colours.normal_back, sheet_.ColourOf(platform::GridColour::kBackColor));
  EXPECT_EQ(colours.normal_fore, sheet_.ColourOf(platform::GridColour::kForeColor));
  EXPECT_EQ(colours.frozen_back, sheet_.ColourOf(platform::GridColour::kBackColorFrozen));
  EXPECT_EQ(colours.frozen_fore, sheet_.ColourOf(platform::GridColour::kForeColorFrozen));
}

TEST_F(RowColoursOf, TakeTheFixedColumnForFrozenWhereNothingIsFrozen) {
  sheet_.SetFrozenCols(0);
  sheet_.SetCellColors({1, 0, 2, 1}, 0x555555, 0x666666);
  sheet_.SetCellColors({1, 1, 2, 2}, 0x777777, 0x888888);
  RowColours colours;
  CaptureRowColours(sheet_, sheet_, 1, colours);
  EXPECT_EQ(colours, (RowColours{0x777777, 0x888888, 0x555555, 0x666666}));
}

TEST_F(RowColoursOf, StayAsTheyWereForARowOrColumnThatIsNotThere) {
  RowColours colours = kBefore;
  CaptureRowColours(sheet_, sheet_, 4, colours);
  EXPECT_EQ(colours, kBefore);
  sheet_.SetFrozenCols(5);
  CaptureRowColours(sheet_, sheet_, 2, colours);
  EXPECT_EQ(colours, kBefore) << "there is no column after the last one";
  sheet_.SetFrozenCols(0);
  sheet_.SetRows(1);
  CaptureRowColours(sheet_, sheet_, -1, colours);
  EXPECT_EQ(colours, kBefore) << "there is no current row";
}

TEST_F(RowColoursOf, StayAsTheyWereWhicheverCallTheGridRefuses) {
  testing::FaultyGrid faulty(sheet_);
  int call = 1;
  for (;; ++call) {
    faulty.RefuseCall(call);
    RowColours colours = kBefore;
    CaptureRowColours(faulty, faulty, 2, colours);
    if (colours == kSet) break;
    ASSERT_EQ(colours, kBefore) << "call " << call;
  }
  EXPECT_GE(call, 5);
}

TEST_F(RowColoursOf, AreReadWithoutChangingTheGrid) {
  sheet_.Select(3, 4);
  RowColours colours;
  CaptureRowColours(sheet_, sheet_, 2, colours);
  EXPECT_EQ(sheet_.Row(), 3);
  EXPECT_EQ(sheet_.CellBackColor(2, 3), 0x333333U);
  EXPECT_EQ(sheet_.CellBackColor(2, 4), sheet_.ColourOf(platform::GridColour::kBackColor));
}

}  // namespace
}  // namespace stockbook::grid
