// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "sheet/columns.h"
#include "sheet/outline/row_states.h"
#include "sheet/store/store.h"
#include "stockbook/platform/error.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::sheet {
namespace {

using test::Numbers;
using test::Periods;
using test::Texts;
using test::Together;

// Shown rows as "caption" texts of column 2, joined by blanks.
std::string ShownRows(const GridSheet& sheet) {
  std::string shown;
  for (int row = sheet.FixedRows(); row < sheet.Rows(); ++row) {
    if (sheet.RowHidden(row)) continue;
    if (!shown.empty()) shown += ' ';
    shown += sheet.TextMatrix(row, 2);
  }
  return shown;
}

void LoadTwoPeriods(Sheet& sheet) {
  sheet.LoadColumns(Together(Texts({"200401", "200401", "200402"}), Texts({"a", "b", "c"})), 1);
  sheet.GroupBy(1, 2, "%s");
}

TEST(SheetOutline, GroupsEqualTextsUnderANodeWithTheirText) {
  GridSheet sheet;
  LoadTwoPeriods(sheet);
  EXPECT_EQ(ShownRows(sheet), "200401 a b 200402 c");
  EXPECT_TRUE(sheet.IsSubtotal(1));
  EXPECT_EQ(sheet.RowOutlineLevel(1), 0);
  EXPECT_EQ(sheet.RowOutlineLevel(2), 1);
  EXPECT_FALSE(sheet.IsSubtotal(2));
  EXPECT_EQ(sheet.NextSubtotal(2), 4);
  EXPECT_EQ(sheet.NextSubtotal(1), 1);
  EXPECT_EQ(sheet.NextSubtotal(5), -1);
  EXPECT_EQ(sheet.RowOfRecord(0), 2);
  EXPECT_EQ(sheet.RowOfRecord(2), 5);
  EXPECT_EQ(sheet.RecordOfRow(4), -1);
  EXPECT_EQ(sheet.RecordOfRow(5), 2);
  EXPECT_TRUE(sheet.CheckInvariants());
}

TEST(SheetOutline, CollapsingLeavesOpeningRowNodesAndTotalsInSight) {
  GridSheet sheet;
  LoadTwoPeriods(sheet);
  sheet.AddItem("", 1);
  sheet.SetTextMatrix(1, 2, "opening");
  sheet.AddItem("", 5);
  sheet.SetTextMatrix(5, 2, "total1");
  sheet.SetIsSubtotal(5, true);
  sheet.AddItem("", 8);
  sheet.SetTextMatrix(8, 2, "total2");
  sheet.SetIsSubtotal(8, true);
  EXPECT_EQ(ShownRows(sheet), "opening 200401 a b total1 200402 c total2");
  for (int row = sheet.NextSubtotal(1); row >= 0; row = sheet.NextSubtotal(row + 1)) sheet.SetIsCollapsed(row, true);
  EXPECT_EQ(ShownRows(sheet), "opening 200401 total1 200402 total2");
  EXPECT_TRUE(sheet.IsCollapsed(2));
  EXPECT_TRUE(sheet.RowHidden(3));
  EXPECT_TRUE(sheet.CheckInvariants());
  for (int row = sheet.NextSubtotal(1); row >= 0; row = sheet.NextSubtotal(row + 1)) sheet.SetIsCollapsed(row, false);
  EXPECT_EQ(ShownRows(sheet), "opening 200401 a b total1 200402 c total2");
}

TEST(SheetOutline, RowsHiddenForThemselvesStayHiddenWhenTheirNodeOpens) {
  GridSheet sheet;
  LoadTwoPeriods(sheet);
  sheet.SetRowHidden(2, true);
  sheet.SetIsCollapsed(1, true);
  sheet.SetIsCollapsed(1, false);
  EXPECT_EQ(ShownRows(sheet), "200401 b 200402 c");
}

TEST(SheetOutline, ARowMadeVisibleIsUnfoldedToo) {
  GridSheet sheet;
  LoadTwoPeriods(sheet);
  sheet.SetIsCollapsed(1, true);
  sheet.SetRowHidden(3, false);
  EXPECT_EQ(ShownRows(sheet), "200401 a b 200402 c");
  EXPECT_FALSE(sheet.IsCollapsed(1));
}

TEST(SheetOutline, RowsHiddenAndShownAtOnceLeaveNodesAsTheyAre) {
  GridSheet sheet;
  LoadTwoPeriods(sheet);
  sheet.SetIsCollapsed(1, true);
  sheet.SetRowsHidden(1, sheet.Rows(), true);
  EXPECT_EQ(ShownRows(sheet), "");
  EXPECT_TRUE(sheet.CheckInvariants());
  sheet.SetRowsHidden(1, 5, false);
  EXPECT_EQ(ShownRows(sheet), "200401 200402");
  EXPECT_TRUE(sheet.IsCollapsed(1));
  EXPECT_TRUE(sheet.CheckInvariants());
  sheet.SetIsCollapsed(1, false);
  EXPECT_EQ(ShownRows(sheet), "200401 a b 200402");
}

TEST(SheetOutline, NoRowsOrRowsThatAreNotThereCannotBeHiddenAtOnce) {
  GridSheet sheet;
  LoadTwoPeriods(sheet);
  sheet.SetRowsHidden(3, 3, true);
  EXPECT_EQ(ShownRows(sheet), "200401 a b 200402 c");
  EXPECT_THROW(sheet.SetRowsHidden(1, sheet.Rows() + 1, true), platform::Error);
  EXPECT_EQ(ShownRows(sheet), "200401 a b 200402 c");
}

TEST(SheetOutline, ARowInsertedIntoACollapsedGroupEndsIt) {
  GridSheet sheet;
  LoadTwoPeriods(sheet);
  sheet.SetIsCollapsed(1, true);
  sheet.AddItem("", 3);
  sheet.SetTextMatrix(3, 2, "new");
  EXPECT_EQ(ShownRows(sheet), "200401 new b 200402 c");
  EXPECT_TRUE(sheet.CheckInvariants());
  sheet.SetRowOutlineLevel(3, 1);
  EXPECT_EQ(ShownRows(sheet), "200401 200402 c");
  EXPECT_TRUE(sheet.CheckInvariants());
  sheet.RemoveItem(1);
  EXPECT_EQ(ShownRows(sheet), "a new b 200402 c");
  EXPECT_TRUE(sheet.CheckInvariants());
}

TEST(SheetOutline, AnOrdinaryRowCannotBeCollapsed) {
  GridSheet sheet;
  LoadTwoPeriods(sheet);
  sheet.SetIsCollapsed(2, true);
  EXPECT_FALSE(sheet.IsCollapsed(2));
  sheet.SetIsCollapsed(1, true);
  sheet.SetIsSubtotal(1, false);
  EXPECT_EQ(ShownRows(sheet), "200401 a b 200402 c");
}

TEST(SheetOutline, NestedNodesCoverWhatTheyGovern) {
  GridSheet sheet;
  sheet.SetCols(3);
  const std::vector<std::pair<std::string, int>> rows = {{"A", 0}, {"A1", 1}, {"x", 2}, {"A2", 1},
                                                         {"y", 2}, {"B", 0},  {"z", 1}};
  for (size_t at = 0; at < rows.size(); ++at) {
    const int row = static_cast<int>(at) + 1;
    sheet.AddItem("\t\t" + rows[at].first, row);
    sheet.SetRowOutlineLevel(row, rows[at].second);
    sheet.SetIsSubtotal(row, rows[at].first[0] < 'a');
  }
  sheet.SetIsCollapsed(2, true);
  EXPECT_EQ(ShownRows(sheet), "A A1 A2 y B z");
  sheet.SetIsCollapsed(1, true);
  EXPECT_EQ(ShownRows(sheet), "A B z");
  sheet.SetIsCollapsed(2, false);
  EXPECT_EQ(ShownRows(sheet), "A B z");
  sheet.SetIsCollapsed(1, false);
  EXPECT_EQ(ShownRows(sheet), "A A1 x A2 y B z");
  EXPECT_TRUE(sheet.CheckInvariants());
}

TEST(SheetOutline, GroupsByCellsSetOnTopOfLoadedOnes) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Texts({"p", "p", "p"}), Texts({"a", "b", "c"})), 1);
  sheet.SetTextMatrix(2, 1, "q");
  sheet.GroupBy(1, 2, "[%s]");
  EXPECT_EQ(ShownRows(sheet), "[p] a [q] b [p] c");
}

TEST(SheetOutline, GroupsNumbersAndEmptyTexts) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Numbers(2), Texts({"a", "b"}), Texts({"", ""})), 1);
  sheet.GroupBy(3, 2, "<%s>");
  EXPECT_EQ(ShownRows(sheet), "<> a b");
  sheet.GroupBy(1, 2, "<%s>");
  EXPECT_EQ(ShownRows(sheet), "<> <0> a <1> b");
}

TEST(SheetOutline, CollapsesAndExpandsAMillionRowsByRuns) {
  GridSheet sheet;
  constexpr int kRows = 1000000;
  sheet.LoadColumns(Together(Periods(kRows, 36), Numbers(kRows)), 1);
  sheet.GroupBy(1, 2, "%s");
  EXPECT_EQ(sheet.Rows(), kRows + 37);
  for (int row = sheet.NextSubtotal(1); row >= 0; row = sheet.NextSubtotal(row + 1)) sheet.SetIsCollapsed(row, true);
  EXPECT_EQ(sheet.states().TotalShown(), 37);
  EXPECT_LT(sheet.states().RunCount(), 100U);
  for (int row = sheet.NextSubtotal(1); row >= 0; row = sheet.NextSubtotal(row + 1)) sheet.SetIsCollapsed(row, false);
  EXPECT_EQ(sheet.states().TotalShown(), kRows + 37);
  EXPECT_TRUE(sheet.CheckInvariants());
}

TEST(SheetOutline, TwelveHundredPeriodsCostRunsAndNotRows) {
  GridSheet sheet;
  constexpr int kRows = 1000000;
  constexpr int kPeriods = 1200;
  sheet.LoadColumns(Together(Periods(kRows, kPeriods), Numbers(kRows)), 1);
  sheet.GroupBy(1, 2, "%s");
  for (int node = 1; node >= 0;) {
    const int next = sheet.NextSubtotal(node + 1);
    const int total = next < 0 ? sheet.Rows() : next;
    sheet.AddItem("", total);
    sheet.SetIsSubtotal(total, true);
    sheet.SetRowHeight(total, 500);
    node = next < 0 ? -1 : total + 1;
  }
  EXPECT_EQ(sheet.Rows(), 1 + kRows + 2 * kPeriods);
  EXPECT_LE(sheet.states().RunCount(), 3U * kPeriods + 2);
  EXPECT_LE(sheet.store().order().PieceCount(), 3U * kPeriods + 2);
  EXPECT_EQ(sheet.RowOfRecord(kRows - 1), sheet.Rows() - 2);
  EXPECT_EQ(sheet.RecordOfRow(sheet.Rows() - 2), kRows - 1);
  EXPECT_EQ(sheet.TextMatrix(sheet.Rows() - 2, 2), "999999");
  EXPECT_TRUE(sheet.CheckInvariants());
}

}  // namespace
}  // namespace stockbook::sheet
