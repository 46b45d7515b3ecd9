// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "sheet/columns.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/platform/error.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/fake_ports.h"

namespace stockbook::sheet {
namespace {

using base::Money;
using base::Value;
using platform::Alignment;
using platform::CellRange;
using platform::DataType;
using platform::GridColour;
using platform::PictureAlignment;
using test::Doubles;
using test::Numbers;
using test::Texts;
using test::Together;

TEST(Sheet, BeginsWithOneFixedRowAndColumnAndNoCurrentCell) {
  const GridSheet sheet;
  EXPECT_EQ(sheet.Rows(), 1);
  EXPECT_EQ(sheet.Cols(), 1);
  EXPECT_EQ(sheet.FixedRows(), 1);
  EXPECT_EQ(sheet.FixedCols(), 1);
  EXPECT_EQ(sheet.Row(), -1);
  EXPECT_EQ(sheet.Col(), -1);
  EXPECT_TRUE(sheet.CheckInvariants());
}

TEST(Sheet, ShowsLoadedColumnsBelowTheFixedRows) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Texts({"a", "b", "c"}), Doubles({1.5, -2, 0.1})), 1);
  EXPECT_EQ(sheet.Rows(), 4);
  EXPECT_EQ(sheet.Cols(), 3);
  EXPECT_EQ(sheet.RecordCount(), 3U);
  EXPECT_EQ(sheet.TextMatrix(1, 1), "a");
  EXPECT_EQ(sheet.TextMatrix(2, 2), "-2");
  EXPECT_EQ(sheet.ValueMatrix(3, 2), 0.1);
  EXPECT_EQ(sheet.CellData(3, 2), Value(0.1));
  EXPECT_EQ(sheet.TextMatrix(0, 1), "");
  EXPECT_EQ(sheet.Row(), 1);
  EXPECT_EQ(sheet.Col(), 1);
  EXPECT_TRUE(sheet.CheckInvariants());
}

TEST(Sheet, ReadsCellsOutsideOfItAsNeutralAndRefusesToWriteThem) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Numbers(2)), 1);
  EXPECT_EQ(sheet.TextMatrix(-1, 0), "");
  EXPECT_EQ(sheet.TextMatrix(0, 9), "");
  EXPECT_EQ(sheet.ValueMatrix(3, 1), 0);
  EXPECT_TRUE(sheet.CellData(99, 1).IsNull());
  EXPECT_EQ(sheet.CellPicture(-1, -1), nullptr);
  EXPECT_EQ(sheet.CellBackColor(-1, 0), sheet.ColourOf(GridColour::kBackColor));
  EXPECT_THROW(sheet.SetTextMatrix(3, 0, "x"), platform::Error);
  EXPECT_THROW(sheet.SetCellColors({0, 0, 9, 1}, 0, 0), platform::Error);
  EXPECT_NO_THROW(sheet.SetCellColors({3, 0, 3, 2}, 0, 0));
  EXPECT_EQ(sheet.RecordOfRow(-1), -1);
  EXPECT_EQ(sheet.RowOfRecord(2), -1);
  EXPECT_EQ(sheet.LoadedText(7), nullptr);
}

TEST(Sheet, SaysOfColumnMinusOneThatItIsNoKeys) {
  GridSheet sheet;
  const auto said_of = [&sheet](int column) -> std::string {
    try {
      sheet.SetColWidth(column, 300);
    } catch (const platform::Error& error) {
      return error.what();
    }
    return "";
  };
  EXPECT_EQ(
      said_of(sheet.ColIndex("Qty")),
      "ColWidth: there is no column -1; the grid has columns 0 to 0. ColIndex gives -1 for a key that no column has.");
  EXPECT_EQ(said_of(12), "ColWidth: there is no column 12; the grid has columns 0 to 0.");
}

TEST(Sheet, PutsTextsOfSingleCellsOnTopOfLoadedOnes) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Texts({"a", "b"}), Doubles({1, 2})), 1);
  sheet.SetTextMatrix(1, 2, "-");
  EXPECT_EQ(sheet.TextMatrix(1, 2), "-");
  EXPECT_EQ(sheet.ValueMatrix(1, 2), 0);
  EXPECT_EQ(sheet.CellData(1, 2), Value(1.0));
  sheet.SetCellData(1, 2, Value(int64_t{9}));
  EXPECT_EQ(sheet.CellData(1, 2), Value(int64_t{9}));
  sheet.SetTextMatrix(2, 1, "");
  EXPECT_EQ(sheet.TextMatrix(2, 1), "");
}

TEST(Sheet, ReadsNumbersFromTheShownText) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Texts({"1,234.5", "2004-03-01", "x"}), Doubles({0.1 + 0.2, 1e20, -0.0})), 1);
  EXPECT_EQ(sheet.ValueMatrix(1, 1), 1234.5);
  EXPECT_EQ(sheet.ValueMatrix(2, 1), 0);
  EXPECT_EQ(sheet.ValueMatrix(3, 1), 0);
  EXPECT_EQ(sheet.ValueMatrix(1, 2), 0.3);
  EXPECT_EQ(sheet.ValueMatrix(2, 2), 1e20);
}

TEST(Sheet, ReplacesLoadedContentsAndForgetsTheCellsSetOnThem) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Doubles({1, 2}), Doubles({3, 4})), 1);
  sheet.AddItem("", 1);
  sheet.SetTextMatrix(1, 1, "total");
  sheet.SetTextMatrix(2, 1, "edited");
  sheet.SetCellData(2, 1, Value(int64_t{1}));
  sheet.ReplaceLoaded(1, Doubles({10, 20}));
  EXPECT_EQ(sheet.TextMatrix(1, 1), "total");
  EXPECT_EQ(sheet.TextMatrix(2, 1), "10");
  EXPECT_EQ(sheet.CellData(2, 1), Value(10.0));
  sheet.ReplaceLoadedText(1, Texts({"ten", "twenty"}));
  EXPECT_EQ(sheet.TextMatrix(3, 1), "twenty");
  EXPECT_EQ(sheet.CellData(3, 1), Value(20.0));
  EXPECT_EQ(sheet.LoadedData(1)->Number(1), 20);
  EXPECT_EQ(sheet.LoadedText(1)->Text(0), "ten");
  EXPECT_THROW(sheet.ReplaceLoaded(1, Doubles({1})), platform::Error);
  EXPECT_THROW(sheet.LoadColumns(Together(Doubles({1}), Doubles({1, 2})), 1), platform::Error);
}

TEST(Sheet, ReplacesAColumnThatHadNothingLoaded) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Doubles({1, 2})), 1);
  sheet.SetCols(4);
  EXPECT_EQ(sheet.LoadedText(3), nullptr);
  sheet.ReplaceLoaded(3, Doubles({7, 8}));
  EXPECT_EQ(sheet.TextMatrix(2, 3), "8");
}

TEST(Sheet, LoadsOfNoRowsAndNoColumnsLeaveAnEmptyGrid) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Texts({})), 1);
  EXPECT_EQ(sheet.Rows(), 1);
  EXPECT_EQ(sheet.Row(), -1);
  sheet.LoadColumns({}, 1);
  EXPECT_EQ(sheet.Rows(), 1);
  sheet.GroupBy(1, 1, "%s");
  EXPECT_EQ(sheet.Rows(), 1);
  EXPECT_TRUE(sheet.CheckInvariants());
}

TEST(Sheet, ALaterLoadReplacesAllRowsAndWhatWasSetOnThem) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Texts({"a", "b"})), 1);
  sheet.SetTextMatrix(0, 1, "caption");
  sheet.AddItem("x\ty", 3);
  sheet.SetCellColors({1, 0, 4, 2}, 0x123456, 0x654321);
  sheet.SetRowHidden(1, true);
  sheet.LoadColumns(Together(Texts({"c"})), 1);
  EXPECT_EQ(sheet.Rows(), 2);
  EXPECT_EQ(sheet.TextMatrix(0, 1), "caption");
  EXPECT_EQ(sheet.TextMatrix(1, 1), "c");
  EXPECT_EQ(sheet.CellBackColor(1, 1), sheet.ColourOf(GridColour::kBackColor));
  EXPECT_FALSE(sheet.RowHidden(1));
  EXPECT_TRUE(sheet.CheckInvariants());
}

TEST(Sheet, ShowsFormattedNumbersAndLeavesOtherTextsAlone) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Doubles({1234.5, 1.005, -0.001})), 1);
  sheet.SetColDataType(1, DataType::kDouble);
  sheet.SetColFormat(1, "#,##0.00");
  sheet.SetTextMatrix(0, 1, "1234");
  EXPECT_EQ(sheet.DisplayText(0, 1), "1234");
  EXPECT_EQ(sheet.DisplayText(1, 1), "1,234.50");
  EXPECT_EQ(sheet.DisplayText(2, 1), "1.01");
  EXPECT_EQ(sheet.DisplayText(3, 1), "0.00");
  sheet.SetTextMatrix(1, 1, "-");
  sheet.SetTextMatrix(2, 1, "12.5\n1,300.25");
  sheet.SetTextMatrix(3, 1, "");
  EXPECT_EQ(sheet.DisplayText(1, 1), "-");
  EXPECT_EQ(sheet.DisplayText(2, 1), "12.5\n1,300.25");
  EXPECT_EQ(sheet.DisplayText(3, 1), "");
  EXPECT_EQ(sheet.TextMatrix(1, 1), "-");
}

TEST(Sheet, TakesTheTypeFromTheFormatWhereNoneWasSet) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Texts({"1234.5"}), Texts({"2004-03-01 08:00:00"})), 1);
  EXPECT_EQ(sheet.ColDataType(1), DataType::kString);
  sheet.SetColFormat(1, "#,##0.00");
  sheet.SetColFormat(2, "yyyy-MM-dd");
  EXPECT_EQ(sheet.ColDataType(1), DataType::kDouble);
  EXPECT_EQ(sheet.ColDataType(2), DataType::kDate);
  EXPECT_EQ(sheet.DisplayText(1, 1), "1,234.50");
  EXPECT_EQ(sheet.DisplayText(1, 2), "2004-03-01");
  sheet.SetColFormat(1, "");
  EXPECT_EQ(sheet.ColDataType(1), DataType::kString);
  EXPECT_EQ(sheet.DisplayText(1, 1), "1234.5");
}

TEST(Sheet, KeepsATypeThatWasSetWhateverTheFormatAndTheValuesAre) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Doubles({1234.5}), Texts({"8"})), 1);
  sheet.SetColDataType(1, DataType::kString);
  sheet.SetColDataType(2, DataType::kCurrency);
  sheet.SetColFormat(1, "#,##0.00");
  sheet.SetColFormat(2, "yyyy-MM-dd");
  sheet.LoadColumns(Together(Doubles({1234.5}), Texts({"8"})), 1);
  EXPECT_EQ(sheet.ColDataType(1), DataType::kString);
  EXPECT_EQ(sheet.ColDataType(2), DataType::kCurrency);
  EXPECT_EQ(sheet.DisplayText(1, 1), "1234.5");
}

TEST(Sheet, TakesAColumnForNumbersAsLongAsItsLoadedValuesAreAllNumbers) {
  columns::ColumnBuilder some;
  some.AppendNull();
  some.AppendMoney(Money::FromUnits(5));
  columns::ColumnBuilder none;
  none.AppendNull();
  none.AppendNull();
  GridSheet sheet;
  sheet.LoadColumns(Together(some.Finish(), none.Finish(), Texts({"1", "2"})), 1);
  EXPECT_EQ(sheet.ColDataType(1), DataType::kDouble);
  EXPECT_EQ(sheet.ColDataType(2), DataType::kString) << "nothing is no number";
  EXPECT_EQ(sheet.ColDataType(3), DataType::kString);
  sheet.ReplaceLoaded(1, Texts({"a", "b"}));
  sheet.ReplaceLoaded(2, Numbers(2));
  EXPECT_EQ(sheet.ColDataType(1), DataType::kString);
  EXPECT_EQ(sheet.ColDataType(2), DataType::kDouble);
  sheet.SetRows(1);
  sheet.LoadColumns(Together(Texts({"a"}), Texts({"b"})), 1);
  EXPECT_EQ(sheet.ColDataType(2), DataType::kString);
}

TEST(Sheet, ShowsLoadedMoneyExactly) {
  columns::ColumnBuilder builder;
  builder.AppendMoney(Money::FromUnits(INT64_MAX));
  builder.AppendNull();
  GridSheet sheet;
  sheet.LoadColumns(Together(builder.Finish()), 1);
  sheet.SetColDataType(1, DataType::kCurrency);
  sheet.SetColFormat(1, "#,##0.0000");
  EXPECT_EQ(sheet.DisplayText(1, 1), "922,337,203,685,477.5807");
  EXPECT_EQ(sheet.TextMatrix(1, 1), "922337203685477.5807");
  EXPECT_EQ(sheet.DisplayText(2, 1), "");
}

TEST(Sheet, ShowsDatesOfATextColumnByItsDateFormat) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Texts({"2004-03-01 08:00:00", "unknown", ""})), 1);
  sheet.SetColDataType(1, DataType::kString);
  sheet.SetColFormat(1, "yyyy-MM-dd");
  EXPECT_EQ(sheet.DisplayText(1, 1), "2004-03-01");
  EXPECT_EQ(sheet.DisplayText(2, 1), "unknown");
  EXPECT_EQ(sheet.DisplayText(3, 1), "");
}

TEST(Sheet, KeepsPicturesOfCellsAndOfLoadedRows) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Numbers(3)), 1);
  const auto first = testing::MakePicture("any");
  const auto second = testing::MakePicture("any");
  sheet.SetCellPicture({1, 1, 2, 2}, second, PictureAlignment::kCenterCenter);
  sheet.SetLoadedPictures(1, {0, 1, 1}, {nullptr, first}, PictureAlignment::kRightTop);
  EXPECT_EQ(sheet.CellPicture(1, 1), nullptr);
  EXPECT_EQ(sheet.CellPicture(2, 1), first);
  EXPECT_EQ(sheet.CellPictureAlignment(2, 1), PictureAlignment::kRightTop);
  sheet.SetCellPicture({2, 1, 4, 2}, second, PictureAlignment::kStretch);
  EXPECT_EQ(sheet.CellPicture(3, 1), second);
  EXPECT_EQ(sheet.CellPictureAlignment(3, 1), PictureAlignment::kStretch);
  sheet.SetCellPicture({2, 1, 3, 2}, nullptr, PictureAlignment::kLeftTop);
  EXPECT_EQ(sheet.CellPicture(2, 1), nullptr);
  sheet.AddItem("", 2);
  EXPECT_EQ(sheet.CellPicture(4, 1), second);
  EXPECT_EQ(sheet.CellPicture(2, 1), nullptr);
}

TEST(Sheet, TintsNodesUntilAColourIsSetOnThem) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Texts({"a", "b"})), 1);
  sheet.SetIsSubtotal(2, true);
  EXPECT_EQ(sheet.CellBackColor(2, 1), *sheet.appearance().node_back);
  EXPECT_EQ(sheet.CellBackColor(1, 1), sheet.ColourOf(GridColour::kBackColor));
  EXPECT_EQ(sheet.CellBackColor(0, 1), sheet.ColourOf(GridColour::kBackColorFixed));
  sheet.SetCellColors({2, 1, 3, 2}, 0x0000FF, 0x00FF00);
  EXPECT_EQ(sheet.CellBackColor(2, 1), 0x0000FFU);
  EXPECT_EQ(sheet.CellForeColor(2, 1), 0x00FF00U);
}

TEST(Sheet, ARowThatGetsItsOwnColoursBackFollowsTheGridAgain) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Texts({"a", "b"})), 1);
  const auto back = sheet.CellBackColor(1, 1);
  const auto fore = sheet.CellForeColor(1, 1);
  sheet.SetCellColors({1, 1, 2, 2}, 0xE2D2C7, 0);
  sheet.SetCellColors({1, 1, 2, 2}, back, fore);
  sheet.SetColour(GridColour::kBackColor, 0x00101010);
  EXPECT_EQ(sheet.CellBackColor(1, 1), 0x00101010U);
}

TEST(Sheet, FindsColumnsByKeyWhereverTheyMove) {
  GridSheet sheet;
  sheet.SetCols(5);
  sheet.SetColKey(1, "A");
  sheet.SetColKey(2, "B");
  sheet.SetColKey(3, "C");
  sheet.SetTextMatrix(0, 2, "caption B");
  sheet.SetColWidth(2, 777);
  sheet.SetColPosition(2, 4);
  EXPECT_EQ(sheet.ColIndex("B"), 4);
  EXPECT_EQ(sheet.ColIndex("C"), 2);
  EXPECT_EQ(sheet.TextMatrix(0, 4), "caption B");
  EXPECT_EQ(sheet.ColWidth(4), 777);
  sheet.SetColPosition(4, 1);
  EXPECT_EQ(sheet.ColIndex("B"), 1);
  EXPECT_EQ(sheet.ColIndex("A"), 2);
  EXPECT_EQ(sheet.ColIndex("b"), -1);
  EXPECT_EQ(sheet.ColIndex(""), -1);
  sheet.SetCols(2);
  EXPECT_EQ(sheet.ColIndex("A"), -1);
  EXPECT_EQ(sheet.ColKey(1), "B");
  EXPECT_TRUE(sheet.CheckInvariants());
}

TEST(Sheet, FindsTheFirstOfSeveralColumnsWithOneKey) {
  GridSheet sheet;
  sheet.SetCols(4);
  sheet.SetColKey(3, "K");
  sheet.SetColKey(1, "K");
  EXPECT_EQ(sheet.ColIndex("K"), 1);
  sheet.SetColKey(1, "");
  EXPECT_EQ(sheet.ColIndex("K"), 3);
}

TEST(Sheet, KeepsSettingsOfColumns) {
  GridSheet sheet;
  sheet.SetCols(3);
  sheet.SetColAlignment(-1, Alignment::kCenterCenter);
  EXPECT_EQ(sheet.ColAlignment(0), Alignment::kCenterCenter);
  EXPECT_EQ(sheet.ColAlignment(2), Alignment::kCenterCenter);
  sheet.SetColHidden(2, true);
  EXPECT_TRUE(sheet.ColHidden(2));
  EXPECT_THROW(sheet.SetColHidden(3, true), platform::Error);
  EXPECT_THROW(sheet.SetFrozenCols(3), platform::Error);
  EXPECT_THROW(sheet.SetCols(-1), platform::Error);
  EXPECT_THROW(sheet.SetFixedCols(4), platform::Error);
  EXPECT_THROW(static_cast<void>(sheet.ColKey(-1)), platform::Error);
}

TEST(Sheet, ShowsTextsWhereAFormatHasNoPlaceForADigit) {
  GridSheet sheet;
  sheet.SetCols(2);
  sheet.SetRows(2);
  sheet.SetTextMatrix(1, 1, "007");
  for (const char* format : {"@", ">", "foo", "\"库存\"", "General Number"}) {
    sheet.SetColFormat(1, format);
    EXPECT_EQ(sheet.DisplayText(1, 1), "007") << format;
    EXPECT_EQ(sheet.ColDataType(1), platform::DataType::kString) << format;
  }
  sheet.SetColFormat(1, "0.0");
  EXPECT_EQ(sheet.DisplayText(1, 1), "7.0");
}

TEST(Sheet, FillsAnAddedRowFromATabText) {
  GridSheet sheet;
  sheet.SetCols(3);
  sheet.AddItem("a\tb\tc\td", 1);
  EXPECT_EQ(sheet.Rows(), 2);
  EXPECT_EQ(sheet.TextMatrix(1, 0), "a");
  EXPECT_EQ(sheet.TextMatrix(1, 2), "c");
  EXPECT_EQ(sheet.Row(), 1);
  EXPECT_THROW(sheet.AddItem("", 0), platform::Error);
  EXPECT_THROW(sheet.AddItem("", 3), platform::Error);
  sheet.RemoveItem(1);
  EXPECT_EQ(sheet.Row(), -1);
  EXPECT_THROW(sheet.RemoveItem(0), platform::Error);
}

TEST(Sheet, KeepsRowHeightsBetweenTheLimits) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Numbers(3)), 1);
  sheet.SetRowHeight(-1, 250);
  sheet.SetRowHeight(2, 400);
  EXPECT_EQ(sheet.RowHeight(1), 250);
  EXPECT_EQ(sheet.RowHeight(2), 400);
  sheet.SetRowHeightMin(300);
  sheet.SetRowHeightMax(350);
  EXPECT_EQ(sheet.RowHeight(1), 300);
  EXPECT_EQ(sheet.RowHeight(2), 350);
  sheet.SetRowHeightMin(0);
  sheet.SetRowHeightMax(0);
  sheet.AddItem("", 4);
  EXPECT_EQ(sheet.RowHeight(4), 250);
  EXPECT_EQ(sheet.RowHeight(2), 400);
  sheet.SetRowHeight(-1, 200);
  EXPECT_EQ(sheet.RowHeight(2), 200);
  EXPECT_THROW(sheet.SetRowHeight(-2, 100), platform::Error);
}

}  // namespace
}  // namespace stockbook::sheet
