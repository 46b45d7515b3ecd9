// SPDX-License-Identifier: MIT
// A sheet under random edits, compared with a model so short that it is obviously right.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "sheet/columns.h"
#include "sheet/geometry/row_axis.h"
#include "sheet/outline/row_states.h"
#include "sheet/plain_model.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::sheet {
namespace {

using platform::Colour;
using test::kNoColour;
using test::ModelRow;
using test::PlainModel;

class RandomEdits : public ::testing::TestWithParam<unsigned> {
 protected:
  static constexpr int kColumns = 5;

  RandomEdits() : random_(GetParam()) {
    model_.rows.emplace_back(kColumns);
    for (size_t column = 0; column < kColumns; ++column)
      model_.columns.push_back({column, false, SheetColumn::kDefaultWidth});
    Load();
  }

  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  bool HasDataRows() const { return model_.Rows() > model_.fixed_rows; }
  int AnyDataRow() { return model_.fixed_rows + Below(model_.Rows() - model_.fixed_rows); }
  int AnyColumn() { return Below(kColumns); }

  void Load() {
    const int records = Below(40);
    sheet_.LoadColumns(test::Together(test::Periods(records, 4), test::Numbers(records), test::Numbers(records),
                                      test::Numbers(records)),
                       1);
    model_.ForgetRecords();
    model_.rows.resize(static_cast<size_t>(model_.fixed_rows), ModelRow(kColumns));
    for (int record = 0; record < records; ++record) {
      model_.rows.emplace_back(kColumns);
      const int row = model_.Rows() - 1;
      model_.Row(row).record = record;
      model_.Text(row, 1) = std::to_string(200001 + record * 4 / records);
      for (int column = 2; column < kColumns; ++column) model_.Text(row, column) = std::to_string(record);
    }
  }

  void EditRows() {
    switch (Below(8)) {
      case 0:
      case 1: {
        const int row = model_.fixed_rows + Below(model_.Rows() - model_.fixed_rows + 1);
        sheet_.AddItem("new", row);
        model_.rows.insert(model_.rows.begin() + row, ModelRow(kColumns));
        model_.Text(row, 0) = "new";
        break;
      }
      case 2:
      case 3: {
        if (!HasDataRows()) return;
        const int row = AnyDataRow();
        sheet_.RemoveItem(row);
        model_.rows.erase(model_.rows.begin() + row);
        break;
      }
      case 4: {
        const int count = std::max(0, model_.Rows() + Below(5) - 3);
        sheet_.SetRows(count);
        model_.rows.resize(static_cast<size_t>(count), ModelRow(kColumns));
        if (count <= model_.fixed_rows) model_.ForgetRecords();
        model_.fixed_rows = std::min(model_.fixed_rows, count);
        break;
      }
      case 5:
        model_.fixed_rows = std::min(model_.Rows(), Below(4));
        sheet_.SetFixedRows(model_.fixed_rows);
        break;
      case 6:
        if (Below(4) == 0) Load();
        break;
      default: {
        if (model_.Rows() > 80) return;
        const int column = AnyColumn();
        sheet_.GroupBy(column, 2, "%s");
        model_.GroupBy(column, 2);
      }
    }
  }

  void EditOutline() {
    const int row = Below(model_.Rows());
    switch (Below(4)) {
      case 0: {
        const bool node = Below(2) == 0;
        sheet_.SetIsSubtotal(row, node);
        if (model_.Row(row).node != node) model_.Row(row).collapsed = false;
        model_.Row(row).node = node;
        break;
      }
      case 1:
        model_.Row(row).level = Below(4);
        sheet_.SetRowOutlineLevel(row, model_.Row(row).level);
        break;
      default: {
        const bool collapsed = Below(2) == 0;
        const bool all = Below(10) == 0;
        if (all) {
          collapsed ? sheet_.CollapseAll() : sheet_.ExpandAll();
        } else {
          sheet_.SetIsCollapsed(row, collapsed);
        }
        for (int at = all ? 0 : row; at < (all ? model_.Rows() : row + 1); ++at)
          if (model_.Row(at).node) model_.Row(at).collapsed = collapsed;
      }
    }
  }

  void EditCells() {
    if (!HasDataRows()) return;
    const int row = AnyDataRow();
    const int column = AnyColumn();
    if (Below(2) == 0) {
      sheet_.SetTextMatrix(row, column, "edit");
      model_.Text(row, column) = "edit";
      return;
    }
    const int last = row + 1 + Below(model_.Rows() - row);
    const auto colour = static_cast<Colour>(0x100 + Below(3));
    sheet_.SetCellColors({row, column, last, column + 1}, colour, 0);
    for (int at = row; at < last; ++at) model_.Back(at, column) = colour;
  }

  void EditHeights() {
    const int twips = 15 + Below(600);
    switch (Below(6)) {
      case 0:
        sheet_.SetRowHeight(-1, twips);
        for (ModelRow& row : model_.rows) row.height = -1;
        model_.default_height = twips;
        break;
      case 1:
        model_.least_height = static_cast<float>(Below(2) * twips);
        sheet_.SetRowHeightMin(model_.least_height);
        break;
      case 2:
        model_.most_height = static_cast<float>(Below(2) * twips);
        sheet_.SetRowHeightMax(model_.most_height);
        break;
      default: {
        const int row = Below(model_.Rows());
        model_.Row(row).height = twips;
        sheet_.SetRowHeight(row, twips);
      }
    }
  }

  void EditColumns() {
    const int column = AnyColumn();
    switch (Below(5)) {
      case 0: {
        const int to = AnyColumn();
        sheet_.SetColPosition(column, to);
        model_.MoveColumn(column, to);
        break;
      }
      case 1:
        model_.Column(column).hidden = Below(2) == 0;
        sheet_.SetColHidden(column, model_.Column(column).hidden);
        break;
      case 2:
        model_.Column(column).width = 15 * Below(200);
        sheet_.SetColWidth(column, model_.Column(column).width);
        break;
      case 3:
        model_.fixed_cols = Below(3);
        sheet_.SetFixedCols(model_.fixed_cols);
        break;
      default:
        model_.frozen_cols = column;
        sheet_.SetFrozenCols(column);
    }
  }

  void HideRow() {
    const int row = Below(model_.Rows());
    // Showing a row unfolds the nodes above it, so the model leaves such rows alone.
    if (model_.Row(row).hidden && model_.Covered(row)) return;
    model_.Row(row).hidden = !model_.Row(row).hidden;
    sheet_.SetRowHidden(row, model_.Row(row).hidden);
  }

  void EditView() {
    constexpr double kScales[] = {1, 1.25, 1.5, 1.75, 2, 3};
    switch (Below(4)) {
      case 0:
        model_.view = {Below(500), Below(400)};
        model_.scale = kScales[Below(6)];
        sheet_.view().SetSize(model_.view, model_.scale);
        break;
      case 1: {
        const int row = Below(model_.Rows());
        sheet_.SetTopRow(row);
        const int64_t above = model_.Tops()[static_cast<size_t>(std::max(row, model_.fixed_rows))] -
                              model_.Tops()[static_cast<size_t>(model_.fixed_rows)];
        ASSERT_EQ(sheet_.view().geometry().scroll().y, std::min(above, model_.MostScroll()));
        break;
      }
      case 2: {
        const int row = Below(model_.Rows());
        sheet_.SelectRange(row, AnyColumn(), Below(model_.Rows()), 0);
        // Without data rows there is no current cell.
        ASSERT_EQ(sheet_.Row(), HasDataRows() ? row : -1);
        break;
      }
      default: {
        const int64_t y = Below(3000) - 100;
        sheet_.view().ScrollTo({0, y});
        ASSERT_EQ(sheet_.view().geometry().scroll().y, std::clamp<int64_t>(y, 0, model_.MostScroll()));
      }
    }
  }

  void Edit() {
    switch (Below(9)) {
      case 0:
      case 1:
        return EditRows();
      case 2:
        return EditCells();
      case 3:
        return EditColumns();
      default:
        break;
    }
    if (model_.Rows() == 0) return EditRows();
    switch (Below(5)) {
      case 0:
      case 1:
        return EditOutline();
      case 2:
        return EditHeights();
      case 3:
        return HideRow();
      default:
        return EditView();
    }
  }

  void Compare() {
    ASSERT_TRUE(sheet_.CheckInvariants());
    ASSERT_EQ(sheet_.Rows(), model_.Rows());
    ASSERT_EQ(sheet_.FixedRows(), model_.fixed_rows);
    const std::vector<int64_t> tops = model_.Tops();
    for (int row = 0; row < model_.Rows(); ++row) CompareRow(row, tops[static_cast<size_t>(row)]);
    ASSERT_EQ(sheet_.view().rows().Total(), tops.back());
    CompareColumns();
    const int64_t scroll = sheet_.view().geometry().scroll().y;
    ASSERT_EQ(sheet_.view().geometry().max_scroll().y, model_.MostScroll());
    ASSERT_EQ(sheet_.TopRow(), model_.TopRow(scroll));
    ASSERT_EQ(sheet_.BottomRow(), model_.BottomRow(scroll));
    for (const int row : {sheet_.Row(), sheet_.RowSel()}) {
      ASSERT_LT(row, model_.Rows());
      ASSERT_EQ(row < 0, model_.Rows() <= model_.fixed_rows);
    }
  }

  void CompareRow(int row, int64_t top) {
    const ModelRow& expected = model_.Row(row);
    const bool shown = model_.Shown(row);
    ASSERT_EQ(sheet_.RowHidden(row), !shown) << row;
    ASSERT_EQ(sheet_.states().At(row).covered, model_.Covered(row)) << row;
    ASSERT_EQ(sheet_.RecordOfRow(row), expected.record);
    if (expected.record >= 0) {
      ASSERT_EQ(sheet_.RowOfRecord(static_cast<size_t>(expected.record)), row);
    }
    ASSERT_EQ(sheet_.IsSubtotal(row), expected.node);
    ASSERT_EQ(sheet_.IsCollapsed(row), expected.collapsed);
    ASSERT_EQ(sheet_.RowOutlineLevel(row), expected.level);
    ASSERT_EQ(sheet_.RowHeight(row), model_.Height(row));
    ASSERT_EQ(sheet_.view().rows().Top(row), top);
    if (shown) {
      ASSERT_EQ(sheet_.view().rows().RowAt(top), row);
      ASSERT_EQ(sheet_.view().rows().RowAt(top + model_.HeightPx(row) - 1), row);
    }
    for (int column = 0; column < kColumns; ++column) {
      ASSERT_EQ(sheet_.TextMatrix(row, column), model_.Text(row, column)) << row << ' ' << column;
      if (model_.Back(row, column) != kNoColour) {
        ASSERT_EQ(sheet_.CellBackColor(row, column), model_.Back(row, column)) << row << ' ' << column;
      }
    }
  }

  void CompareColumns() {
    const std::vector<int64_t> lefts = model_.Lefts();
    const Geometry geometry = sheet_.view().geometry();
    ASSERT_EQ(sheet_.PinnedCols(), model_.PinnedCols());
    for (int column = 0; column < kColumns; ++column) {
      const int64_t scrolled = column < model_.PinnedCols() ? 0 : geometry.scroll().x;
      ASSERT_EQ(geometry.CellRect(0, column).x, lefts[static_cast<size_t>(column)] - scrolled);
      ASSERT_EQ(geometry.CellRect(0, column).width, model_.WidthPx(column));
    }
    ASSERT_EQ(geometry.ContentWidth(), lefts.back());
  }

  std::mt19937 random_;
  GridSheet sheet_;
  PlainModel model_;
};

TEST_P(RandomEdits, KeepTheSheetEqualToAPlainModel) {
  for (int round = 0; round < 600; ++round) {
    Edit();
    if (!HasFatalFailure()) Compare();
    if (HasFatalFailure()) FAIL() << "after edit " << round << " of seed " << GetParam();
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomEdits, ::testing::Range(0U, 40U));

}  // namespace
}  // namespace stockbook::sheet
