// SPDX-License-Identifier: MIT
// A sheet under random edits against a model of a few lines that is obviously right.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "sheet/columns.h"
#include "sheet/sheet.h"

namespace stockbook::sheet {
namespace {

using platform::Colour;

struct ModelRow {
  int64_t record = -1;
  std::vector<std::string> texts;  // by column identity
  std::vector<Colour> backs;
  int level = 0;
  bool node = false;
  bool collapsed = false;
  bool hidden = false;
  int height = -1;
};

struct ModelColumn {
  size_t identity = 0;
  bool hidden = false;
  int width = SheetColumn::kDefaultWidth;
};

constexpr Colour kNoColour = 0xFF000000;
constexpr int kDefaultHeight = 300;

struct Model {
  std::vector<ModelRow> rows;
  std::vector<ModelColumn> columns;

  // A row is covered when a collapsed node stands before it and all rows in between are deeper than that node.
  bool Covered(size_t row) const {
    int deepest = rows[row].level;
    for (size_t at = row; at-- > 0;) {
      if (rows[at].node && rows[at].collapsed && rows[at].level < deepest) return true;
      deepest = std::min(deepest, rows[at].level);
    }
    return false;
  }
};

class RandomEdits : public ::testing::TestWithParam<unsigned> {
 protected:
  static constexpr int kColumns = 5;

  RandomEdits() : random_(GetParam()) {
    const int records = 12 + Below(30);
    sheet_.LoadColumns(test::Together(test::Periods(records, 4), test::Numbers(records), test::Numbers(records),
                                      test::Numbers(records)),
                       1);
    model_.rows.push_back(
        {-1, std::vector<std::string>(kColumns), std::vector<Colour>(kColumns, kNoColour), 0, false, false, false, -1});
    for (int record = 0; record < records; ++record) {
      ModelRow row{record,
                   std::vector<std::string>(kColumns, std::to_string(record)),
                   std::vector<Colour>(kColumns, kNoColour),
                   0,
                   false,
                   false,
                   false,
                   -1};
      row.texts[0].clear();
      row.texts[1] = sheet_.TextMatrix(record + 1, 1);
      model_.rows.push_back(row);
    }
    for (size_t column = 0; column < kColumns; ++column)
      model_.columns.push_back({column, false, SheetColumn::kDefaultWidth});
  }

  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  int Rows() const { return static_cast<int>(model_.rows.size()); }
  ModelRow& At(int row) { return model_.rows[static_cast<size_t>(row)]; }
  int AnyRow() { return 1 + Below(Rows() - 1); }

  void EditRows() {
    switch (Below(3)) {
      case 0: {
        const int row = 1 + Below(Rows());
        sheet_.AddItem("new", row);
        ModelRow inserted{
            -1, std::vector<std::string>(kColumns), std::vector<Colour>(kColumns, kNoColour), 0, false, false, false,
            -1};
        inserted.texts[model_.columns[0].identity] = "new";
        model_.rows.insert(model_.rows.begin() + row, inserted);
        break;
      }
      case 1: {
        if (Rows() < 5) return;
        const int row = AnyRow();
        sheet_.RemoveItem(row);
        model_.rows.erase(model_.rows.begin() + row);
        break;
      }
      default: {
        const int count = std::max(2, Rows() + Below(5) - 3);
        sheet_.SetRows(count);
        model_.rows.resize(static_cast<size_t>(count),
                           {-1, std::vector<std::string>(kColumns), std::vector<Colour>(kColumns, kNoColour), 0, false,
                            false, false, -1});
      }
    }
  }

  void EditOutline() {
    const int row = AnyRow();
    switch (Below(4)) {
      case 0: {
        const bool node = Below(2) == 0;
        sheet_.SetIsSubtotal(row, node);
        if (At(row).node != node) At(row).collapsed = false;
        At(row).node = node;
        break;
      }
      case 1: {
        const int level = Below(4);
        sheet_.SetRowOutlineLevel(row, level);
        At(row).level = level;
        break;
      }
      default: {
        const bool collapsed = Below(2) == 0;
        sheet_.SetIsCollapsed(row, collapsed);
        if (At(row).node) At(row).collapsed = collapsed;
      }
    }
  }

  void EditCells() {
    const int row = AnyRow();
    const int column = Below(kColumns);
    switch (Below(3)) {
      case 0:
        sheet_.SetTextMatrix(row, column, "edit");
        At(row).texts[model_.columns[static_cast<size_t>(column)].identity] = "edit";
        break;
      case 1: {
        const int last = row + 1 + Below(Rows() - row);
        const auto colour = static_cast<Colour>(0x100 + Below(3));
        sheet_.SetCellColors({row, column, last, column + 1}, colour, 0);
        for (int at = row; at < last; ++at) At(at).backs[model_.columns[static_cast<size_t>(column)].identity] = colour;
        break;
      }
      default:
        At(row).height = 100 + 15 * Below(30);
        sheet_.SetRowHeight(row, At(row).height);
    }
  }

  void EditColumns() {
    const int column = Below(kColumns);
    switch (Below(4)) {
      case 0: {
        const int to = Below(kColumns);
        sheet_.SetColPosition(column, to);
        const ModelColumn moved = model_.columns[static_cast<size_t>(column)];
        model_.columns.erase(model_.columns.begin() + column);
        model_.columns.insert(model_.columns.begin() + to, moved);
        break;
      }
      case 1:
        model_.columns[static_cast<size_t>(column)].hidden = Below(2) == 0;
        sheet_.SetColHidden(column, model_.columns[static_cast<size_t>(column)].hidden);
        break;
      case 2:
        model_.columns[static_cast<size_t>(column)].width = 15 * Below(200);
        sheet_.SetColWidth(column, model_.columns[static_cast<size_t>(column)].width);
        break;
      default:
        sheet_.SetFrozenCols(Below(kColumns));
    }
  }

  void HideRow() {
    const int row = AnyRow();
    // Showing a row unfolds what covers it; the model leaves such rows alone.
    if (!At(row).hidden) {
      sheet_.SetRowHidden(row, true);
      At(row).hidden = true;
    } else if (!model_.Covered(static_cast<size_t>(row))) {
      sheet_.SetRowHidden(row, false);
      At(row).hidden = false;
    }
  }

  void Compare() {
    ASSERT_TRUE(sheet_.CheckInvariants());
    ASSERT_EQ(sheet_.Rows(), Rows());
    int64_t y = 0;
    for (int row = 0; row < Rows(); ++row) {
      const ModelRow& expected = At(row);
      const bool shown = !expected.hidden && !model_.Covered(static_cast<size_t>(row));
      ASSERT_EQ(sheet_.RowHidden(row), !shown) << row;
      ASSERT_EQ(sheet_.RecordOfRow(row), expected.record);
      ASSERT_EQ(sheet_.IsSubtotal(row), expected.node);
      ASSERT_EQ(sheet_.IsCollapsed(row), expected.collapsed);
      ASSERT_EQ(sheet_.RowOutlineLevel(row), expected.level);
      const int height = expected.height < 0 ? kDefaultHeight : expected.height;
      ASSERT_EQ(sheet_.RowHeight(row), height);
      ASSERT_EQ(sheet_.states().PixelsBefore(row), y);
      if (shown) {
        const int64_t pixels = RowHeights::ToPixels(height, 1.0 / 15.0);
        ASSERT_EQ(sheet_.states().RowAtPixel(y), row);
        ASSERT_EQ(sheet_.states().RowAtPixel(y + pixels - 1), row);
        y += pixels;
      }
      for (int column = 0; column < kColumns; ++column) CompareCell(row, column);
    }
    ASSERT_EQ(sheet_.states().TotalPixels(), y);
    CompareColumns();
  }

  void CompareCell(int row, int column) {
    const size_t identity = model_.columns[static_cast<size_t>(column)].identity;
    ASSERT_EQ(sheet_.TextMatrix(row, column), At(row).texts[identity]) << row << ' ' << column;
    const Colour back = At(row).backs[identity];
    if (back != kNoColour) {
      ASSERT_EQ(sheet_.CellBackColor(row, column), back) << row << ' ' << column;
    }
  }

  void CompareColumns() {
    int64_t x = 0;
    const Geometry geometry = sheet_.geometry();
    for (int column = 0; column < kColumns; ++column) {
      const ModelColumn& expected = model_.columns[static_cast<size_t>(column)];
      const int64_t width = expected.hidden ? 0 : RowHeights::ToPixels(expected.width, 1.0 / 15.0);
      ASSERT_EQ(geometry.CellRect(0, column).width, width);
      x += width;
    }
    ASSERT_EQ(geometry.ContentWidth(), x);
  }

  std::mt19937 random_;
  Sheet sheet_;
  Model model_;
};

TEST_P(RandomEdits, KeepTheSheetEqualToAPlainModel) {
  for (int round = 0; round < 400; ++round) {
    switch (Below(6)) {
      case 0:
        EditRows();
        break;
      case 1:
      case 2:
        EditOutline();
        break;
      case 3:
        EditCells();
        break;
      case 4:
        EditColumns();
        break;
      default:
        HideRow();
    }
    Compare();
    if (HasFatalFailure()) FAIL() << "after edit " << round << " of seed " << GetParam();
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomEdits, ::testing::Range(0U, 20U));

}  // namespace
}  // namespace stockbook::sheet
