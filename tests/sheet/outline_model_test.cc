// SPDX-License-Identifier: MIT
// Levels, nodes and folding under random changes, compared with loops over a list of rows.
#include <gtest/gtest.h>

#include <random>

#include "sheet/outline/outline.h"
#include "sheet/plain_model.h"

namespace stockbook::sheet {
namespace {

using test::ModelRow;
using test::PlainModel;

class RandomOutline : public ::testing::TestWithParam<unsigned> {
 protected:
  RandomOutline() : random_(GetParam()) {}

  int Below(int limit) { return limit <= 1 ? 0 : static_cast<int>(random_() % static_cast<unsigned>(limit)); }

  void ChangeRows() {
    const int row = Below(model_.Rows() + 1);
    switch (Below(5)) {
      case 0: {
        const int count = 1 + Below(3);
        outline_.InsertRows(row, count);
        model_.rows.insert(model_.rows.begin() + row, static_cast<size_t>(count), ModelRow(0));
        break;
      }
      case 1:
      case 2: {
        const int count = Below(std::min(4, model_.Rows() - row + 1));
        outline_.RemoveRows(row, count);
        model_.rows.erase(model_.rows.begin() + row, model_.rows.begin() + row + count);
        break;
      }
      default:
        if (model_.Rows() < 25) InsertNodes();
    }
  }

  void InsertNodes() {
    std::vector<int64_t> rows;
    std::vector<ModelRow> with_nodes;
    const int first_line = Below(2);
    for (int row = 0; row < model_.Rows(); ++row) {
      if (Below(8) == 0) {
        rows.push_back(row);
        with_nodes.emplace_back(0);
        with_nodes.back().node = true;
      }
      with_nodes.push_back(model_.Row(row));
      if (row >= first_line && !with_nodes.back().node) with_nodes.back().level = 1;
    }
    outline_.InsertNodes(rows, std::min(first_line, model_.Rows()));
    model_.rows = std::move(with_nodes);
  }

  void ChangeRow() {
    const int row = Below(model_.Rows());
    ModelRow& of = model_.Row(row);
    switch (Below(5)) {
      case 0:
        of.node = Below(4) > 0;
        of.collapsed = of.collapsed && of.node;
        outline_.SetSubtotal(row, of.node);
        break;
      case 1:
      case 2:
        of.level = Below(4);
        outline_.SetLevel(row, of.level);
        break;
      default: {
        const bool collapsed = Below(3) > 0;
        EXPECT_EQ(outline_.SetCollapsed(row, collapsed), of.node && of.collapsed != collapsed);
        if (of.node) of.collapsed = collapsed;
      }
    }
  }

  void Change() {
    if (model_.Rows() == 0 || Below(4) == 0) return ChangeRows();
    if (Below(40) > 0) return ChangeRow();
    const bool collapsed = Below(2) == 0;
    outline_.SetAllCollapsed(collapsed);
    for (ModelRow& row : model_.rows) row.collapsed = row.node && collapsed;
  }

  void Compare() {
    ASSERT_TRUE(outline_.CheckInvariants());
    ASSERT_EQ(states_.Rows(), model_.Rows());
    for (int row = 0; row < model_.Rows(); ++row) {
      const ModelRow& of = model_.Row(row);
      const RowState state = states_.At(row);
      ASSERT_EQ(state.level, of.level) << row;
      ASSERT_EQ(state.subtotal, of.node) << row;
      ASSERT_EQ(state.collapsed, of.collapsed) << row;
      ASSERT_EQ(state.covered, model_.Covered(row)) << row;
      int end = row + 1;
      while (end < model_.Rows() && model_.Row(end).level > of.level) ++end;
      ASSERT_EQ(outline_.EndOf(row), end) << row;
      ASSERT_EQ(outline_.Governs(row), end > row + 1) << row;
      int above = row - 1;
      while (above >= 0 && model_.Row(above).level >= of.level) --above;
      ASSERT_EQ(outline_.NodeOf(row), above >= 0 && model_.Row(above).node ? above : -1) << row;
    }
    int lines = 0;
    for (const auto& [first, last] : outline_.Lines(0)) {
      for (int64_t row = first; row < last; ++row) ASSERT_FALSE(model_.Row(static_cast<int>(row)).node);
      lines += static_cast<int>(last - first);
    }
    ASSERT_EQ(lines, model_.Rows() - states_.NodeCount());
  }

  std::mt19937 random_;
  RowStates states_;
  Outline outline_{states_};
  PlainModel model_;
};

TEST_P(RandomOutline, CoversWhatTheNodesBeforeARowSay) {
  for (int round = 0; round < 4000; ++round) {
    Change();
    if (!HasFailure()) Compare();
    if (HasFailure()) FAIL() << "after change " << round << " of seed " << GetParam();
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomOutline, ::testing::Range(0U, 8U));

}  // namespace
}  // namespace stockbook::sheet
