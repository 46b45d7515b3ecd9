// SPDX-License-Identifier: MIT
// The cost of the engine in runs and bytes, which are counted; nothing is timed.
#include <gtest/gtest.h>

#include <random>

#include "sheet/columns.h"
#include "sheet/outline/row_states.h"
#include "sheet/store/store.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::sheet {
namespace {

using test::Numbers;
using test::Periods;
using test::Together;

constexpr int kRows = 1000000;
constexpr int kPeriods = 36;

// A million lines under 36 nodes, a total row after each group, a picture code for every line.
class EngineCost : public ::testing::Test {
 protected:
  EngineCost() {
    sheet.LoadColumns(Together(Periods(kRows, kPeriods), Numbers(kRows)), 1);
    std::vector<uint8_t> codes(kRows);
    for (size_t record = 0; record < codes.size(); ++record) codes[record] = static_cast<uint8_t>(record % 8);
    sheet.SetLoadedPictures(2, std::move(codes), {}, platform::PictureAlignment::kLeftTop);
    sheet.GroupBy(1, 2, "%s");
    for (int node = 1; node >= 0;) {
      const int next = sheet.NextSubtotal(node + 1);
      const int total = next < 0 ? sheet.Rows() : next;
      sheet.AddItem("total\t1,234.56\n2,345.67", total);
      sheet.SetIsSubtotal(total, true);
      sheet.SetRowHeight(total, 500);
      node = next < 0 ? -1 : total + 1;
    }
    for (int node = sheet.NextSubtotal(1); node >= 0; node = sheet.NextSubtotal(node + 1)) nodes.push_back(node);
  }

  GridSheet sheet;
  std::vector<int> nodes;
};

TEST_F(EngineCost, StaysWithinTwentyFourBytesARow) {
  EXPECT_EQ(sheet.Rows(), 1 + kRows + 2 * kPeriods);
  EXPECT_LE(sheet.EngineBytes(), size_t{24} * kRows);
  // The picture codes take half a byte per line, and everything else takes almost nothing.
  EXPECT_GE(sheet.EngineBytes(), size_t{kRows} / 2);
  EXPECT_LE(sheet.EngineBytes(), size_t{kRows} / 2 + 300000U);
}

TEST_F(EngineCost, CountsWhatIsSetOnSingleCells) {
  const size_t before = sheet.EngineBytes();
  const std::string text(1000, 'x');
  for (int row = 1; row <= 100; ++row) sheet.SetTextMatrix(row, 1, text);
  EXPECT_GE(sheet.EngineBytes(), before + 100U * text.size());
  const size_t with_texts = sheet.EngineBytes();
  for (int row = 1; row <= 2000; row += 2) sheet.SetCellColors({row, 2, row + 1, 3}, 0x11, 0x22);
  EXPECT_GE(sheet.EngineBytes(), with_texts + 1000U * sizeof(int64_t));
  sheet.SetRows(1);
  EXPECT_LT(sheet.EngineBytes(), before);
}

TEST_F(EngineCost, FoldingUnfoldingAndResizingComeBackToTheRunsThereWere) {
  const size_t runs = sheet.states().RunCount();
  const size_t pieces = sheet.store().order().PieceCount();
  EXPECT_LE(runs, 3U * kPeriods + 1);
  EXPECT_LE(pieces, 3U * kPeriods + 1);
  size_t bytes = 0;
  for (int round = 0; round < 50; ++round) {
    for (const int node : nodes) sheet.SetIsCollapsed(node, true);
    for (const int node : nodes) {
      const int height = sheet.RowHeight(node);
      sheet.SetRowHeight(node, 700);
      sheet.SetRowHeight(node, height);
    }
    EXPECT_LE(sheet.states().RunCount(), runs + 2);
    for (const int node : nodes) sheet.SetIsCollapsed(node, false);
    sheet.CollapseAll();
    sheet.ExpandAll();
    for (int row = 100; row < 200; ++row) sheet.SetRowHeight(row, 20 * row);
    EXPECT_GE(sheet.states().RunCount(), runs + 100);
    // Lines that had different heights form one run again once they share one, between the runs before and after.
    for (int row = 100; row < 200; ++row) sheet.SetRowHeight(row, 400);
    EXPECT_EQ(sheet.states().RunCount(), runs + 2);
    if (round == 0) bytes = sheet.EngineBytes();
    EXPECT_EQ(sheet.EngineBytes(), bytes);
  }
  EXPECT_TRUE(sheet.CheckInvariants());
}

TEST_F(EngineCost, RowsThatComeAndGoLeaveNothingBehind) {
  std::mt19937 random(13);
  const size_t runs = sheet.states().RunCount();
  const size_t pieces = sheet.store().order().PieceCount();
  size_t bytes = 0;
  for (int round = 0; round < 20; ++round) {
    std::vector<int> rows;
    for (int inserted = 0; inserted < 200; ++inserted) {
      rows.push_back(1 + static_cast<int>(random() % static_cast<unsigned>(sheet.Rows())));
      sheet.AddItem("a\tb", rows.back());
      sheet.SetRowOutlineLevel(rows.back(), 1);
    }
    for (; !rows.empty(); rows.pop_back()) sheet.RemoveItem(rows.back());
    EXPECT_EQ(sheet.states().RunCount(), runs);
    EXPECT_EQ(sheet.store().order().PieceCount(), pieces);
    if (round == 0) bytes = sheet.EngineBytes();
    EXPECT_LE(sheet.EngineBytes(), bytes + bytes / 10);
  }
}

}  // namespace
}  // namespace stockbook::sheet
