// SPDX-License-Identifier: MIT
// What remains of the rows of one result when the next one is loaded.
#include <gtest/gtest.h>

#include "sheet/columns.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::sheet {
namespace {

using test::Numbers;
using test::Texts;
using test::Together;

constexpr platform::Colour kRed = 0x000000FF;

TEST(Reload, KeepsTheTextsOfLoadedRowsThatWereMadeFixed) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Texts({"a", "b", "c"})), 1);
  sheet.SetFixedRows(3);
  sheet.LoadColumns(Together(Texts({"x", "y", "z"})), 1);
  EXPECT_TRUE(sheet.CheckInvariants());
  EXPECT_EQ(sheet.Rows(), 6);
  EXPECT_EQ(sheet.TextMatrix(1, 1), "a");
  EXPECT_EQ(sheet.TextMatrix(2, 1), "b");
  EXPECT_EQ(sheet.TextMatrix(3, 1), "x");
  EXPECT_EQ(sheet.RowOfRecord(0), 3);
  EXPECT_EQ(sheet.RecordOfRow(1), -1);
}

TEST(Reload, KeepsTheTextsOfLoadedRowsThatWereMadeFixedWhenAllOthersGo) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Texts({"a", "b", "c"})), 1);
  sheet.SetCellColors({1, 1, 2, 2}, kRed, 0);
  sheet.SetFixedRows(3);
  sheet.SetRows(3);
  EXPECT_TRUE(sheet.CheckInvariants());
  EXPECT_EQ(sheet.RecordCount(), 0U);
  EXPECT_EQ(sheet.RowOfRecord(0), -1);
  EXPECT_EQ(sheet.TextMatrix(2, 1), "b");
  EXPECT_EQ(sheet.CellBackColor(1, 1), kRed);
}

TEST(Reload, GivesNewRecordsNoColoursOfRemovedOnes) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Numbers(5)), 1);
  sheet.RemoveItem(4);
  // Spans the record that was removed.
  sheet.SetCellColors({3, 1, 5, 2}, kRed, 0);
  sheet.RemoveItem(4);
  sheet.LoadColumns(Together(Numbers(5)), 1);
  for (int row = 1; row <= 5; ++row) EXPECT_NE(sheet.CellBackColor(row, 1), kRed) << row;
  EXPECT_TRUE(sheet.CheckInvariants());
}

TEST(Reload, ForgetsPicturesAndEditsOfTheResultBefore) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Numbers(3), Numbers(3)), 1);
  sheet.SetTextMatrix(2, 1, "edited");
  sheet.SetCellData(2, 2, base::Value(int64_t{9}));
  sheet.SetLoadedPictures(1, {0, 1, 0}, {nullptr, nullptr}, platform::PictureAlignment::kLeftTop);
  sheet.LoadColumns(Together(Numbers(3)), 1);
  EXPECT_EQ(sheet.TextMatrix(2, 1), "1");
  EXPECT_EQ(sheet.TextMatrix(2, 2), "");
  EXPECT_TRUE(sheet.CellData(2, 2).IsNull());
  EXPECT_FALSE(sheet.HasEditedRecords(1));
  EXPECT_TRUE(sheet.CheckInvariants());
}

}  // namespace
}  // namespace stockbook::sheet
