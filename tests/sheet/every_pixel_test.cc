// SPDX-License-Identifier: MIT
// The owner of every pixel of the view, compared with a walk over all rows and columns,
// and every cell at its place.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "sheet/columns.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::sheet {
namespace {

using test::Numbers;
using test::Periods;
using test::Together;

constexpr double kScales[] = {1, 1.25, 1.5, 1.75, 2, 3};

// The sizes of rows or columns on the screen, 0 for hidden ones, and how many of them are pinned.
struct Axis {
  std::vector<int64_t> sizes;
  int pinned = 0;
  int64_t scroll = 0;
  int64_t view = 0;

  int64_t Sum(int from, int to) const {
    int64_t sum = 0;
    for (int at = from; at < to; ++at) sum += sizes[static_cast<size_t>(at)];
    return sum;
  }
  int Count() const { return static_cast<int>(sizes.size()); }
  int64_t Pinned() const { return Sum(0, pinned); }
  // The row or column at the pixel; -1 for none.
  int At(int64_t pixel) const {
    const bool in_pinned = pixel < Pinned();
    int64_t edge = in_pinned ? 0 : Pinned() - scroll;
    for (int at = in_pinned ? 0 : pinned; at < Count(); ++at) {
      edge += sizes[static_cast<size_t>(at)];
      if (pixel < edge) return at;
    }
    return -1;
  }
  int64_t MostScroll() const { return std::max<int64_t>(0, Sum(0, Count()) - std::max(view, Pinned())); }
};

int64_t Pixels(int twips, double scale) {
  return twips <= 0 ? 0 : std::max<int64_t>(1, std::llround(twips * scale / 15));
}

Axis RowsOf(const GridSheet& sheet) {
  Axis rows{{}, sheet.FixedRows(), sheet.view().geometry().scroll().y, sheet.view().size().height};
  for (int row = 0; row < sheet.Rows(); ++row)
    rows.sizes.push_back(sheet.RowHidden(row) ? 0 : Pixels(sheet.RowHeight(row), sheet.view().scale()));
  return rows;
}

Axis ColumnsOf(const GridSheet& sheet) {
  Axis columns{{}, sheet.PinnedCols(), sheet.view().geometry().scroll().x, sheet.view().size().width};
  for (int column = 0; column < sheet.Cols(); ++column)
    columns.sizes.push_back(sheet.ColHidden(column) ? 0 : Pixels(sheet.ColWidth(column), sheet.view().scale()));
  return columns;
}

void ExpectEveryPixelToBelongToItsCell(const GridSheet& sheet) {
  const Geometry geometry = sheet.view().geometry();
  const Axis rows = RowsOf(sheet);
  const Axis columns = ColumnsOf(sheet);
  ASSERT_TRUE(sheet.CheckInvariants());
  ASSERT_EQ(geometry.max_scroll(), (ScrollPosition{columns.MostScroll(), rows.MostScroll()}));
  std::vector<int> row_at;
  std::vector<int> column_at;
  for (int y = 0; y < sheet.view().size().height; ++y) row_at.push_back(rows.At(y));
  for (int x = 0; x < sheet.view().size().width; ++x) column_at.push_back(columns.At(x));
  for (int y = 0; y < sheet.view().size().height; ++y) {
    for (int x = 0; x < sheet.view().size().width; ++x) {
      const CellPosition expected{row_at[static_cast<size_t>(y)], column_at[static_cast<size_t>(x)]};
      ASSERT_EQ(geometry.CellAt({x, y}), expected) << x << ' ' << y;
    }
  }
}

// Every cell, in view or not: its visible part belongs to it, and all visible parts together fill the cells' part of
// the view.
void ExpectEveryCellToBeHit(const GridSheet& sheet) {
  const Geometry geometry = sheet.view().geometry();
  int64_t seen_pixels = 0;
  for (int row = 0; row < sheet.Rows(); ++row) {
    for (int column = 0; column < sheet.Cols(); ++column) {
      const Rect seen = geometry.VisibleCellRect(row, column);
      if (seen.IsEmpty()) continue;
      ASSERT_TRUE(geometry.CellRect(row, column).Contains(seen));
      seen_pixels += int64_t{seen.width} * seen.height;
      for (const int x : {seen.x, seen.x + seen.width / 2, seen.right() - 1}) {
        for (const int y : {seen.y, seen.y + seen.height / 2, seen.bottom() - 1})
          ASSERT_EQ(geometry.CellAt({x, y}), (CellPosition{row, column})) << x << ' ' << y;
      }
    }
  }
  const Rect cells = geometry.CellsRect();
  ASSERT_EQ(seen_pixels, cells.IsEmpty() ? 0 : int64_t{cells.width} * cells.height);
}

class EveryPixel : public ::testing::TestWithParam<double> {
 protected:
  int Below(int limit) { return limit <= 1 ? 0 : static_cast<int>(random_() % static_cast<unsigned>(limit)); }

  void Load(int records) {
    sheet_.LoadColumns(Together(Periods(records, 5), Numbers(records), Numbers(records), Numbers(records)), 1);
    if (Below(3) > 0) sheet_.GroupBy(1, 2, "%s");
  }

  void Change() {
    if (sheet_.Rows() == 0 || sheet_.Cols() == 0) return;
    const int row = Below(sheet_.Rows());
    const int column = Below(sheet_.Cols());
    switch (Below(9)) {
      case 0:
        sheet_.SetRowHeight(row, Below(3) == 0 ? 0 : Below(900));
        break;
      case 1:
        sheet_.SetRowHidden(row, Below(3) > 0);
        break;
      case 2:
        sheet_.SetColHidden(column, Below(2) == 0);
        break;
      case 3:
        sheet_.SetFrozenCols(column);
        break;
      case 4:
        if (const int node = sheet_.NextSubtotal(row); node >= 0) sheet_.SetIsCollapsed(node, Below(3) > 0);
        break;
      case 5:
        sheet_.SetColWidth(column, Below(4) == 0 ? 0 : Below(1500));
        break;
      case 6:
        sheet_.SetFixedRows(Below(std::min(4, sheet_.Rows() + 1)));
        break;
      case 7:
        sheet_.SetFixedCols(Below(std::min(3, sheet_.Cols() + 1)));
        break;
      default:
        sheet_.SetRowHeight(-1, Below(500));
    }
  }

  std::mt19937 random_{11};
  GridSheet sheet_;
};

TEST_P(EveryPixel, BelongsToTheCellThatAWalkOverTheSheetFindsThere) {
  for (int round = 0; round < 300; ++round) {
    if (round % 50 == 0) Load(Below(3) == 0 ? Below(3) : 60);
    for (int changes = Below(4); changes > 0; --changes) Change();
    sheet_.view().SetSize({Below(4) == 0 ? Below(12) : Below(170), Below(4) == 0 ? Below(12) : Below(130)}, GetParam());
    const ScrollPosition most = sheet_.view().geometry().max_scroll();
    // Look at the ends in particular.
    const auto somewhere = [&](int64_t end) { return Below(4) == 0 ? end : Below(static_cast<int>(end) + 2); };
    sheet_.view().ScrollTo({somewhere(most.x), somewhere(most.y)});
    ExpectEveryPixelToBelongToItsCell(sheet_);
    if (!HasFatalFailure()) ExpectEveryCellToBeHit(sheet_);
    if (HasFatalFailure()) FAIL() << "round " << round;
  }
}

TEST_P(EveryPixel, BelongsToNoCellOfASheetWithoutRowsOrColumns) {
  const auto expect_none = [&] {
    sheet_.view().SetSize({90, 70}, GetParam());
    ExpectEveryPixelToBelongToItsCell(sheet_);
    ExpectEveryCellToBeHit(sheet_);
  };
  expect_none();
  sheet_.SetRows(0);
  expect_none();
  sheet_.SetCols(0);
  expect_none();
  sheet_.SetRows(5);
  expect_none();
  EXPECT_EQ(sheet_.view().geometry().CellAt({1, 1}).column, -1);
}

TEST_P(EveryPixel, IsAPinnedCellsWhereTheViewIsSmallerThanThePinnedPart) {
  Load(60);
  sheet_.SetFrozenCols(3);
  sheet_.SetFixedRows(3);
  for (const Size view : {Size{1, 1}, Size{150, 10}, Size{10, 150}, Size{20, 20}, Size{0, 0}}) {
    sheet_.view().SetSize(view, GetParam());
    sheet_.view().ScrollTo(sheet_.view().geometry().max_scroll());
    ExpectEveryPixelToBelongToItsCell(sheet_);
    ExpectEveryCellToBeHit(sheet_);
  }
}

INSTANTIATE_TEST_SUITE_P(Scales, EveryPixel, ::testing::ValuesIn(kScales));

}  // namespace
}  // namespace stockbook::sheet
