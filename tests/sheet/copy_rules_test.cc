// SPDX-License-Identifier: MIT
// The text of a copied selection, byte by byte.
#include <gtest/gtest.h>

#include "stockbook/platform/error.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/fake_ports.h"

namespace stockbook::sheet {
namespace {

// A sheet of one caption row, a fixed column and five columns; the cell of row r and column c is "rc".
class CopyRules : public ::testing::Test {
 protected:
  CopyRules() {
    sheet_.SetCols(6);
    sheet_.SetRows(8);
    for (int row = 0; row < 8; ++row) {
      for (int column = 0; column < 6; ++column) {
        sheet_.SetTextMatrix(row, column, (row == 0 ? "C" : std::to_string(row)) + std::to_string(column));
      }
    }
  }
  std::string Copied() {
    sheet_.CopySelection(clipboard_);
    return clipboard_.text;
  }

  GridSheet sheet_;
  testing::FakeClipboard clipboard_;
};

TEST_F(CopyRules, ASingleCellIsItsCaptionALineEndAndItsText) {
  sheet_.Select(5, 3);
  EXPECT_EQ(Copied(), "C3\r\n53");
}

TEST_F(CopyRules, AHiddenLastColumnLeavesATabAtTheEndOfEveryLine) {
  sheet_.SetColHidden(4, true);
  sheet_.SelectRange(2, 2, 3, 4);
  EXPECT_EQ(Copied(), "C2\tC3\t\r\n22\t23\t\r\n32\t33\t");
}

TEST_F(CopyRules, ACaptionOfTwoLinesIsCopiedAsOne) {
  sheet_.SetTextMatrix(0, 2, "入库/出库\n数量");
  sheet_.SetTextMatrix(0, 3, "\r\n库存\r数量\n");
  sheet_.SelectRange(1, 2, 1, 3);
  EXPECT_EQ(Copied(), "入库/出库数量\t库存数量\r\n12\t13");
}

TEST_F(CopyRules, TheCaptionsAreThoseOfTheTopRowAlone) {
  sheet_.SetFixedRows(2);
  sheet_.SelectRange(4, 1, 5, 2);
  EXPECT_EQ(Copied(), "C1\tC2\r\n41\t42\r\n51\t52");
}

TEST_F(CopyRules, ATotalKeepsItsTwoLines) {
  sheet_.SetTextMatrix(3, 2, "1.00\n21.00");
  sheet_.SelectRange(3, 1, 3, 2);
  EXPECT_EQ(Copied(), "C1\tC2\r\n31\t1.00\n21.00");
}

TEST_F(CopyRules, NumbersAreCopiedWithTheirFormat) {
  sheet_.SetColDataType(2, platform::DataType::kDouble);
  sheet_.SetColFormat(2, "#,##0.00");
  sheet_.SetTextMatrix(3, 2, "-1234567.891");
  sheet_.Select(3, 2);
  EXPECT_EQ(Copied(), "C2\r\n" + sheet_.DisplayText(3, 2));
  EXPECT_EQ(sheet_.DisplayText(3, 2), "-1,234,567.89");
}

TEST_F(CopyRules, HiddenRowsAndColumnsAreLeftOut) {
  sheet_.SetColHidden(2, true);
  sheet_.SetRowHidden(3, true);
  sheet_.SelectRange(2, 1, 4, 3);
  EXPECT_EQ(Copied(), "C1\tC3\r\n21\t23\r\n41\t43");
}

TEST_F(CopyRules, AHiddenLastRowLeavesTheLineEndOfTheOneBefore) {
  sheet_.SetRowHidden(4, true);
  sheet_.SelectRange(2, 1, 4, 1);
  EXPECT_EQ(Copied(), "C1\r\n21\r\n31\r\n");
}

TEST_F(CopyRules, TheRangeIsTheSameFromEitherCorner) {
  sheet_.SelectRange(3, 2, 2, 1);
  EXPECT_EQ(Copied(), "C1\tC2\r\n21\t22\r\n31\t32");
}

TEST_F(CopyRules, AGridWithoutDataRowsGivesTheCaptionLine) {
  sheet_.Select(2, 4);
  sheet_.SetRows(1);
  EXPECT_EQ(Copied(), "C4\r\n");
}

TEST_F(CopyRules, AFailureLeavesTheClipboardEmptyAndThePointerAsUsual) {
  class Refusing : public testing::FakeClipboard {
   public:
    void SetText(std::string) override { throw platform::Error("clipboard", "occupied"); }
  } refusing;
  sheet_.Select(5, 3);
  refusing.text = "before";
  EXPECT_THROW(sheet_.CopySelection(refusing), platform::Error);
  EXPECT_EQ(refusing.text, "");
  EXPECT_EQ(sheet_.Pointer(), platform::MousePointer::kDefault);
  class Occupied : public testing::FakeClipboard {
   public:
    void Clear() override { throw platform::Error("clipboard", "occupied"); }
  } occupied;
  occupied.text = "before";
  EXPECT_THROW(sheet_.CopySelection(occupied), platform::Error);
  EXPECT_EQ(occupied.text, "before");
  EXPECT_EQ(sheet_.Pointer(), platform::MousePointer::kDefault);
}

}  // namespace
}  // namespace stockbook::sheet
