// SPDX-License-Identifier: MIT
#include "control/working_control.h"

namespace stockbook::control {
namespace {

// The bills' numbers stand under the outline column; the opening row is row 1, nodes and totals are rows 2, 9, 10, 15.
class FindInJournal : public WorkingControl {
 protected:
  Lines Find(const std::string& search) {
    heard_.Take();
    EXPECT_FALSE(control().Find(search));
    return heard_.Take();
  }
};

TEST_F(FindInJournal, TellsEveryHitInOrderAndTheCountAtLast) {
  EXPECT_EQ(Find("入库单"),
            (Lines{"FindMsg #BEGIN#", "FindMsg 入库单 3 |3", "FindMsg 入库单 5 |5", "FindMsg 入库单 7 |7",
                   "FindMsg 入库单 11 |11", "FindMsg 入库单 13 |13", "FindMsg #END#", "Notify 找到记录共 5 条。"}));
}

TEST_F(FindInJournal, IgnoresTheRowToStartFrom) {
  heard_.Take();
  EXPECT_FALSE(control().Find("入库单", 12));
  EXPECT_EQ(heard_.Take().size(), 8U);
}

TEST_F(FindInJournal, SearchesCollapsedPeriodsAndHiddenRows) {
  const Lines open = Find("出库单 12");
  ASSERT_EQ(open, (Lines{"FindMsg #BEGIN#", "FindMsg 出库单 12 |12", "FindMsg #END#", "Notify 找到记录共 1 条。"}));
  grid().CollapseAll();
  EXPECT_TRUE(grid().RowHidden(12));
  EXPECT_EQ(Find("出库单 12"), open);
}

TEST_F(FindInJournal, FindsOpeningRowNodesAndTotalsToo) {
  EXPECT_EQ(Find("期初"),
            (Lines{"FindMsg #BEGIN#", "FindMsg 2004年03月期初 |1", "FindMsg #END#", "Notify 找到记录共 1 条。"}));
  EXPECT_EQ(Find("合计"), (Lines{"FindMsg #BEGIN#", "FindMsg 2004年03月合计 |9", "FindMsg 2004年04月合计 |15",
                                 "FindMsg #END#", "Notify 找到记录共 2 条。"}));
  EXPECT_EQ(Find("2004-0?")[1], "FindMsg 2004-03 |2");
}

TEST_F(FindInJournal, CountsNothingInHiddenColumns) {
  ASSERT_TRUE(grid().ColHidden(ColumnOf("BillName")));
  ASSERT_TRUE(grid().ColHidden(ColumnOf("RecID")));
  grid().SetTextMatrix(4, ColumnOf("RecID"), "藏");
  EXPECT_EQ(Find("藏").size(), 3U);
  grid().SetTextMatrix(4, ColumnOf("Explain"), "藏");
  EXPECT_EQ(Find("藏")[1], "FindMsg 出库单 4 |4");
  grid().SetColHidden(ColumnOf("Explain"), true);
  EXPECT_EQ(Find("藏").size(), 3U);
}

TEST_F(FindInJournal, CallsARowWithoutBillNumberNameless) {
  grid().SetTextMatrix(7, ColumnOf("BillNo"), "  ");
  grid().SetTextMatrix(7, ColumnOf("Explain"), "退货");
  EXPECT_EQ(Find("退货")[1], "FindMsg [无名称] |7");
}

TEST_F(FindInJournal, ComparesCaseAndReadsWildcards) {
  grid().SetTextMatrix(4, ColumnOf("Explain"), "螺丝 M3");
  EXPECT_EQ(Find("m3").size(), 3U);
  EXPECT_EQ(Find("M#，螺丝;")[1], "FindMsg 出库单 4 |4");
  EXPECT_EQ(Find("出库单?1? "), (Lines{"FindMsg #BEGIN#", "FindMsg 出库单 12 |12", "FindMsg 出库单 14 |14",
                                       "FindMsg #END#", "Notify 找到记录共 2 条。"}));
}

TEST_F(FindInJournal, IsSilentWithoutWords) {
  for (const char* search : {"", " ", ";;", "；，"}) EXPECT_EQ(Find(search), Lines()) << search;
}

TEST_F(FindInJournal, TellsAWordThatIsNoPattern) {
  const Lines lines = Find("入库单 [1");
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[1].rfind("Notify 通配符“*[1*”", 0), 0U) << lines[1];
}

TEST_F(FindInJournal, GoesOnWhenAListenerLoadsClearsOrFindsMeanwhile) {
  int hits = 0;
  const auto on_first = [&](std::function<void()> action) {
    hits = 0;
    heard_.on_hearing = [&hits, action = std::move(action)](const std::string& line) {
      if (line.rfind("FindMsg 入库单", 0) == 0 && ++hits == 1) action();
    };
  };
  on_first([&] { control().Load(7, 0); });
  EXPECT_EQ(Find("入库单").back(), "Notify 找到记录共 5 条。");
  on_first([&] { control().Find("出库单 12"); });
  EXPECT_EQ(Find("入库单").back(), "Notify 找到记录共 5 条。");
  on_first([&] { control().RemoveListener(&heard_); });
  EXPECT_EQ(Find("入库单").size(), 2U);
  control().AddListener(&heard_);
  on_first([&] { grid().SetRows(1); });
  EXPECT_EQ(Find("入库单").back(), "Notify 找到记录共 1 条。");
}

}  // namespace
}  // namespace stockbook::control
