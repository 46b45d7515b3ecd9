// SPDX-License-Identifier: MIT
// Twenty million rows of one column: positions stay exact to the pixel, at every scale.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

#include "sheet/geometry/row_axis.h"
#include "sheet/outline/row_states.h"
#include "sheet/store/store.h"
#include "stockbook/columns/column.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::sheet {
namespace {

constexpr int kGroups = 20;
constexpr int kLines = 1000000;  // of each group
constexpr int kAllRows = kGroups * kLines;

// Captions, then a node and its lines twenty times over; some rows of other heights, some groups folded. The position
// of a row is computed from these alone.
class LongSheet : public ::testing::TestWithParam<double> {
 protected:
  // The column is built once for all scales.
  static columns::Column Groups() {
    columns::ColumnBuilder builder;
    for (int group = 0; group < kGroups; ++group) {
      const std::string text = std::to_string(200001 + group);
      for (int line = 0; line < kLines; ++line) builder.AppendText(text);
    }
    return builder.Finish();
  }

  LongSheet() {
    std::vector<columns::Column> columns;
    columns.push_back(Groups());
    sheet_.LoadColumns(std::move(columns), 1);
    sheet_.GroupBy(1, 1, "%s");
    sheet_.view().SetSize({800, 600}, GetParam());
  }

  static int NodeOf(int group) { return 1 + group * (kLines + 1); }
  int64_t Pixels(int twips) const { return twips == 0 ? 0 : std::llround(twips * GetParam() / 15); }
  int64_t HeightOf(int row) const {
    const auto own = own_heights_.find(row);
    return Pixels(own == own_heights_.end() ? 300 : own->second);
  }
  bool Folded(int row) const {
    const int group = (row - 1) / (kLines + 1);
    return row > 0 && row != NodeOf(group) && folded_[static_cast<size_t>(group)];
  }
  int64_t TopOf(int row) const {
    int64_t hidden = 0;
    for (int group = 0; group < kGroups; ++group) {
      if (folded_[static_cast<size_t>(group)]) hidden += std::clamp(row - NodeOf(group) - 1, 0, kLines);
    }
    int64_t top = (row - hidden) * Pixels(300);
    for (const auto& [own, twips] : own_heights_) {
      if (own < row && !Folded(own)) top += Pixels(twips) - Pixels(300);
    }
    return top;
  }

  void SetHeight(int row, int twips) {
    sheet_.SetRowHeight(row, twips);
    own_heights_[row] = twips;
  }
  void Fold(int group) {
    sheet_.SetIsCollapsed(NodeOf(group), true);
    folded_[static_cast<size_t>(group)] = true;
  }
  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

  void ExpectInPlace(int row) {
    ASSERT_EQ(sheet_.view().rows().Top(row), TopOf(row)) << row;
    const int64_t most = TopOf(sheet_.Rows()) - 600;
    const int64_t wanted = std::min(TopOf(row) - Pixels(300), most);
    sheet_.SetTopRow(row);
    const Geometry geometry = sheet_.view().geometry();
    ASSERT_EQ(geometry.scroll().y, wanted) << row;
    const Rect cell = geometry.VisibleCellRect(row, 1);
    if (Folded(row) || HeightOf(row) == 0) {
      ASSERT_TRUE(cell.IsEmpty());
      return;
    }
    ASSERT_EQ(geometry.CellRect(row, 1).y, TopOf(row) - wanted);
    ASSERT_EQ(geometry.CellRect(row, 1).height, HeightOf(row));
    ASSERT_EQ(geometry.CellAt({cell.x, cell.y}), (CellPosition{row, 1}));
    ASSERT_EQ(geometry.CellAt({cell.x, cell.bottom() - 1}), (CellPosition{row, 1}));
  }

  std::mt19937 random_{12};
  GridSheet sheet_;
  std::map<int, int> own_heights_;
  std::vector<bool> folded_ = std::vector<bool>(kGroups, false);
};

TEST_P(LongSheet, HasEveryRowAtItsPlaceWhateverTheHeightsAndTheFolding) {
  ASSERT_EQ(sheet_.Rows(), 1 + kAllRows + kGroups);
  for (int round = 0; round < 300; ++round) SetHeight(1 + Below(sheet_.Rows() - 1), Below(40) * 25);
  SetHeight(sheet_.Rows() - 1, 450);
  SetHeight(sheet_.Rows() - 2, 0);
  for (const int group : {1, 2, 7, 18}) Fold(group);
  ASSERT_TRUE(sheet_.CheckInvariants());
  ASSERT_EQ(sheet_.view().geometry().ContentHeight(), TopOf(sheet_.Rows()));
  for (int round = 0; round < 300; ++round) ExpectInPlace(1 + Below(sheet_.Rows() - 1));
  for (const auto& [row, twips] : own_heights_) ExpectInPlace(row);
  for (int group = 0; group < kGroups; ++group) ExpectInPlace(NodeOf(group));
  for (int row = sheet_.Rows() - 40; row < sheet_.Rows(); ++row) ExpectInPlace(row);
}

TEST_P(LongSheet, ScrollsToTheEndAndBackToThePixel) {
  SetHeight(kAllRows - 5, 500);
  SetHeight(77, 35);
  Fold(3);
  const int64_t end = TopOf(sheet_.Rows()) - 600;
  for (int round = 0; round < 200; ++round) {
    const int64_t from = static_cast<int64_t>(random_()) * 7919 % end;
    sheet_.view().ScrollTo({0, from});
    ASSERT_EQ(sheet_.view().geometry().scroll().y, from);
    const CellPosition top = sheet_.view().geometry().CellAt({100, 300});
    sheet_.view().ScrollBy(0, INT64_MAX / 2);
    ASSERT_EQ(sheet_.view().geometry().scroll().y, end);
    ASSERT_EQ(sheet_.BottomRow(), sheet_.Rows() - 1);
    ASSERT_EQ(sheet_.view().geometry().CellRect(sheet_.Rows() - 1, 1).bottom(), 600);
    sheet_.view().ScrollBy(0, from - end);
    ASSERT_EQ(sheet_.view().geometry().scroll().y, from);
    ASSERT_EQ(sheet_.view().geometry().CellAt({100, 300}), top);
    sheet_.view().ScrollBy(0, 1);
    sheet_.view().ScrollBy(0, -1);
    ASSERT_EQ(sheet_.view().geometry().scroll().y, from);
  }
  for (int64_t step = 1; step <= 2000; ++step) {
    sheet_.view().ScrollTo({0, end});
    sheet_.view().ScrollBy(0, -step);
    ASSERT_EQ(sheet_.view().geometry().CellRect(sheet_.Rows() - 1, 1).bottom(), 600 + step);
  }
}

INSTANTIATE_TEST_SUITE_P(Scales, LongSheet, ::testing::Values(1, 1.25, 1.75, 3));

TEST(LongSheet, CostsRunsAndNotRows) {
  GridSheet sheet;
  std::vector<columns::Column> columns;
  columns.push_back(columns::Column::Constant(base::Value(int64_t{7}), kAllRows));
  sheet.LoadColumns(std::move(columns), 1);
  sheet.SetRowHeight(-1, 250);
  sheet.view().SetSize({800, 600}, 1.25);
  EXPECT_EQ(sheet.states().RunCount(), 1U);
  EXPECT_EQ(sheet.store().order().PieceCount(), 2U);
  EXPECT_LT(sheet.EngineBytes(), 10000U);
  EXPECT_EQ(sheet.TextMatrix(kAllRows, 1), "7");
  EXPECT_EQ(sheet.RowOfRecord(kAllRows - 1), kAllRows);
}

}  // namespace
}  // namespace stockbook::sheet
