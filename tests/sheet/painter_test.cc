// SPDX-License-Identifier: MIT
#include "sheet/paint/painter.h"

#include <gtest/gtest.h>

#include <set>

#include "base/text.h"
#include "sheet/columns.h"
#include "sheet/geometry/outline_metrics.h"
#include "sheet/recording_canvas.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/fake_ports.h"

namespace stockbook::sheet {
namespace {

using platform::Alignment;
using platform::DataType;
using platform::GridColour;
using platform::GridLineStyle;
using platform::PictureAlignment;
using test::Doubles;
using test::Numbers;
using test::Periods;
using test::RecordingCanvas;
using test::Texts;
using test::Together;

// `rows` records, a period and a number each, 20 pixels high and 100 wide at scale 1, grouped by period.
void Fill(GridSheet& sheet, int rows, int periods) {
  sheet.LoadColumns(Together(Periods(rows, periods), Numbers(rows), Numbers(rows), Numbers(rows)), 1);
  sheet.SetRowHeight(-1, 300);
  sheet.SetColWidth(0, 450);
  for (int column = 1; column < sheet.Cols(); ++column) sheet.SetColWidth(column, 1500);
  sheet.view().SetSize({380, 200}, 1.0);
  if (periods > 0) sheet.GroupBy(1, 2, "%s");
  sheet.SetOutlineCol(2);
}

RecordingCanvas Painted(const GridSheet& sheet) {
  RecordingCanvas canvas;
  Paint(Snapshot::Of(sheet.view()), canvas);
  return canvas;
}

TEST(Painter, DrawsVisibleCellsOnly) {
  GridSheet sheet;
  Fill(sheet, 1000, 0);
  sheet.SetTopRow(500);
  const RecordingCanvas canvas = Painted(sheet);
  std::set<std::string> shown;
  for (const auto& text : canvas.texts) shown.insert(text.text);
  EXPECT_EQ(shown.count("498"), 0U);
  EXPECT_EQ(shown.count("499"), 1U);
  EXPECT_EQ(shown.count("507"), 1U);
  EXPECT_EQ(shown.count("508"), 0U);
  EXPECT_LE(canvas.texts.size(), 9U * 4U);
}

TEST(Painter, DrawsNothingOutsideOfTheAreaItIsGiven) {
  GridSheet sheet;
  Fill(sheet, 1000, 5);
  sheet.SetFrozenCols(1);
  sheet.view().ScrollBy(37, 333);
  sheet.SelectRange(17, 1, 22, 3);
  for (const Rect area :
       {Rect{0, 0, 380, 200}, Rect{50, 30, 100, 57}, Rect{0, 90, 380, 1}, Rect{379, 0, 1, 200}, Rect{0, 0, 0, 0}}) {
    RecordingCanvas canvas;
    Paint(Snapshot::Of(sheet.view(), area), canvas);
    EXPECT_TRUE(canvas.IsBalanced());
    for (const auto& fill : canvas.fills) {
      EXPECT_TRUE(area.Contains(fill.rect)) << fill.rect.x << ' ' << fill.rect.y;
      EXPECT_TRUE(area.Contains(fill.clip));
    }
    for (const auto& text : canvas.texts) EXPECT_TRUE(area.Contains(text.clip)) << text.text;
  }
}

TEST(Painter, FillsEveryPixelOfTheView) {
  GridSheet sheet;
  Fill(sheet, 5, 0);
  sheet.view().ScrollBy(11, 0);
  const RecordingCanvas canvas = Painted(sheet);
  for (int y = 0; y < 200; y += 3) {
    for (int x = 0; x < 380; x += 3) ASSERT_NE(canvas.ColourAt(x, y), 0xFFFFFFFFU) << x << ' ' << y;
  }
  EXPECT_EQ(canvas.ColourAt(379, 199), sheet.ColourOf(GridColour::kBackColorBkg));
  EXPECT_EQ(canvas.ColourAt(100, 50), sheet.ColourOf(GridColour::kBackColor));
}

TEST(Painter, DrawsTwoLineCaptionsCentredOnTwoLines) {
  GridSheet sheet;
  Fill(sheet, 5, 0);
  sheet.SetRowHeight(0, 600);
  sheet.SetTextMatrix(0, 3, "入库/出库\n数量");
  const RecordingCanvas canvas = Painted(sheet);
  const auto* first = canvas.Find("入库/出库");
  const auto* second = canvas.Find("数量");
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(first->align, HorizontalAlign::kCenter);
  EXPECT_EQ(second->rect.y, first->rect.y + RecordingCanvas::kLineHeight);
  EXPECT_EQ(first->rect.height, RecordingCanvas::kLineHeight);
  EXPECT_EQ(first->rect.y, (39 - 28) / 2);
}

TEST(Painter, LeavesOutTheSecondLineWhereOnlyOneFits) {
  GridSheet sheet;
  Fill(sheet, 5, 0);
  sheet.SetTextMatrix(1, 3, "1.00\n2.00");
  const RecordingCanvas canvas = Painted(sheet);
  EXPECT_NE(canvas.Find("1.00"), nullptr);
  EXPECT_EQ(canvas.Find("2.00"), nullptr);
  sheet.SetRowHeight(1, 600);
  EXPECT_NE(Painted(sheet).Find("2.00"), nullptr);
}

TEST(Painter, CutsTheTextOfARowLowerThanALine) {
  GridSheet sheet;
  Fill(sheet, 5, 0);
  sheet.SetTextMatrix(1, 3, "low");
  sheet.SetRowHeight(1, 120);
  const RecordingCanvas canvas = Painted(sheet);
  ASSERT_NE(canvas.Find("low"), nullptr);
  EXPECT_TRUE(canvas.Find("low")->cut);
  EXPECT_EQ(canvas.Find("low")->rect.height, 7);
}

TEST(Painter, ShowsHashesForNumbersThatDoNotFitAndAnEllipsisForTexts) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Texts({"a long text here"}), Doubles({1234567}), Texts({"12.5\n1,234,567.00"})), 1);
  sheet.SetColDataType(2, DataType::kDouble);
  sheet.SetColDataType(3, DataType::kDouble);
  sheet.SetRowHeight(1, 600);
  for (int column = 1; column <= 3; ++column) sheet.SetColWidth(column, 45 * 15);
  const RecordingCanvas canvas = Painted(sheet);
  EXPECT_EQ(canvas.Find("a long text here")->overflow, TextOverflow::kEllipsis);
  EXPECT_EQ(canvas.Find("1234567"), nullptr);
  ASSERT_NE(canvas.Find("#####"), nullptr);
  EXPECT_NE(canvas.Find("12.5"), nullptr);
  EXPECT_EQ(canvas.Find("1,234,567.00"), nullptr);
  sheet.SetColWidth(2, 1500);
  EXPECT_NE(Painted(sheet).Find("1234567"), nullptr);
}

TEST(Painter, ShowsNegativeNumbersInTheirColourUnlessOneIsSet) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Doubles({-1, 1}), Texts({"-x", ""})), 1);
  sheet.SetColDataType(1, DataType::kDouble);
  RecordingCanvas canvas = Painted(sheet);
  EXPECT_EQ(canvas.Find("-1")->colour, *sheet.appearance().negative_fore);
  EXPECT_EQ(canvas.Find("1")->colour, sheet.ColourOf(GridColour::kForeColor));
  EXPECT_EQ(canvas.Find("-x")->colour, sheet.ColourOf(GridColour::kForeColor));
  sheet.SetCellColors({1, 1, 2, 2}, 0, 0x00112233);
  EXPECT_EQ(Painted(sheet).Find("-1")->colour, 0x00112233U);
  Appearance plain = sheet.appearance();
  plain.negative_fore.reset();
  sheet.SetAppearance(plain);
  sheet.SetTextMatrix(2, 1, "-2");
  EXPECT_EQ(Painted(sheet).Find("-2")->colour, sheet.ColourOf(GridColour::kForeColor));
}

TEST(Painter, ShowsHashesForANumberThatReachesOverTheSideOfTheView) {
  GridSheet sheet;
  Fill(sheet, 5, 0);
  for (int column = 2; column < 5; ++column) {
    sheet.SetColDataType(column, DataType::kDouble);
    sheet.SetTextMatrix(1, column, "372.65");
  }
  sheet.SetFrozenCols(1);
  // The fixed column and the first one end at 130. The second extends from 60 to 160, the fourth from 260 to 360.
  sheet.view().SetSize({330, 200}, 1.0);
  sheet.view().ScrollTo({70, 0});
  const RecordingCanvas canvas = Painted(sheet);
  size_t whole = 0;
  size_t hashes = 0;
  for (const auto& text : canvas.texts) {
    whole += text.text == "372.65" ? 1U : 0U;
    if (text.text.find_first_not_of('#') != std::string::npos) continue;
    ++hashes;
    EXPECT_TRUE(text.clip.Contains(text.rect)) << text.rect.x << ' ' << text.rect.width;
  }
  EXPECT_EQ(whole, 1U);
  // Both numbers that are cut off, and the short ones of the other rows in the fourth column.
  EXPECT_EQ(hashes, 6U);
}

TEST(Painter, ShowsPaleHashesThatCanBeSeenOnTheColourOfTheRow) {
  GridSheet sheet;
  Fill(sheet, 5, 0);
  sheet.SetColDataType(2, DataType::kDouble);
  sheet.SetTextMatrix(1, 2, "372.65");
  const auto back = sheet.ColourOf(GridColour::kGridColorFixed);
  sheet.SetCellColors({1, 1, 2, sheet.Cols()}, back, 0x00000000);
  sheet.SetFrozenCols(1);
  sheet.view().SetSize({330, 200}, 1.0);
  sheet.view().ScrollTo({70, 0});
  const RecordingCanvas canvas = Painted(sheet);
  size_t hashes = 0;
  for (const auto& text : canvas.texts) {
    if (text.text.find_first_not_of('#') != std::string::npos || text.colour == 0) continue;
    ++hashes;
    EXPECT_NE(text.colour, back);
  }
  EXPECT_GT(hashes, 0U);
}

TEST(Painter, ShowsEveryNegativeLineOfACellInItsColour) {
  GridSheet sheet;
  Fill(sheet, 5, 0);
  sheet.SetColDataType(3, DataType::kDouble);
  sheet.SetRowHeight(2, 600);
  sheet.SetTextMatrix(2, 3, "125.50\n-7.25");
  const RecordingCanvas canvas = Painted(sheet);
  EXPECT_EQ(canvas.Find("125.50")->colour, sheet.ColourOf(GridColour::kForeColor));
  EXPECT_EQ(canvas.Find("-7.25")->colour, *sheet.appearance().negative_fore);
}

TEST(Painter, MovesTextAsideForPicturesAtItsSides) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Texts({"left"}), Texts({"right"}), Texts({"behind"})), 1);
  const auto picture = testing::MakePicture("any");
  const int without = Painted(sheet).Find("left")->rect.x;
  const int right_without = Painted(sheet).Find("right")->rect.right();
  sheet.SetCellPicture({1, 1, 2, 2}, picture, PictureAlignment::kLeftCenter);
  sheet.SetCellPicture({1, 2, 2, 3}, picture, PictureAlignment::kRightTop);
  sheet.SetCellPicture({1, 3, 2, 4}, picture, PictureAlignment::kStretch);
  const RecordingCanvas canvas = Painted(sheet);
  EXPECT_EQ(canvas.Find("left")->rect.x, without + 16 + 3);
  EXPECT_EQ(canvas.Find("right")->rect.right(), right_without - 16 - 3);
  ASSERT_EQ(canvas.pictures.size(), 3U);
  EXPECT_EQ(canvas.pictures[2].item.rect.width, sheet.view().geometry().CellRect(1, 3).width - 1);
  EXPECT_EQ(canvas.pictures[0].item.rect.width, 16);
}

TEST(Painter, KeepsFrozenColumnsInPlaceAndClipsWhatScrollsBesideThem) {
  GridSheet sheet;
  Fill(sheet, 100, 0);
  sheet.SetFrozenCols(1);
  sheet.SetTextMatrix(1, 1, "frozen");
  sheet.SetTextMatrix(1, 2, "scrolled");
  sheet.view().ScrollBy(40, 0);
  const RecordingCanvas canvas = Painted(sheet);
  EXPECT_EQ(canvas.Find("frozen")->clip, (Rect{30, 20, 100, 180}));
  EXPECT_EQ(canvas.Find("scrolled")->clip, (Rect{130, 20, 250, 180}));
  EXPECT_EQ(canvas.Find("scrolled")->rect.x, 130 - 40 + 4);
  EXPECT_EQ(canvas.ColourAt(129, 100), sheet.appearance().accent);
}

TEST(Painter, FillsSelectedCellsAndFramesTheCurrentOne) {
  GridSheet sheet;
  Fill(sheet, 100, 0);
  sheet.SelectRange(2, 2, 3, 3);
  const RecordingCanvas canvas = Painted(sheet);
  const Rect current = sheet.view().geometry().CellRect(2, 2);
  EXPECT_EQ(canvas.ColourAt(current.x + 50, current.y + 10), sheet.ColourOf(GridColour::kBackColor));
  EXPECT_EQ(canvas.ColourAt(current.x, current.y + 10), sheet.appearance().accent);
  const Rect selected = sheet.view().geometry().CellRect(3, 3);
  EXPECT_EQ(canvas.ColourAt(selected.x + 50, selected.y + 10), sheet.ColourOf(GridColour::kBackColorSel));
}

TEST(Painter, FramesTheCurrentCellInAnotherColourWhereKeysDoNotCome) {
  GridSheet sheet;
  Fill(sheet, 5, 0);
  sheet.Select(2, 2);
  const Rect cell = sheet.view().geometry().CellRect(2, 2);
  EXPECT_EQ(Painted(sheet).ColourAt(cell.x, cell.y), sheet.appearance().accent);
  sheet.view().SetFocused(false);
  EXPECT_EQ(Painted(sheet).ColourAt(cell.x, cell.y), sheet.ColourOf(GridColour::kForeColorFixed));
}

TEST(Painter, DrawsSignsOfNodesThatHaveLines) {
  GridSheet sheet;
  Fill(sheet, 100, 2);
  const Rect cell = sheet.view().geometry().CellRect(1, 2);
  const Rect sign = OutlineMetrics::Of(1.0).Sign(cell, 0);
  const auto ink = sheet.ColourOf(GridColour::kForeColorFixed);
  RecordingCanvas canvas = Painted(sheet);
  EXPECT_EQ(canvas.ColourAt(sign.x, sign.y), ink);
  EXPECT_EQ(canvas.ColourAt(sign.x + 4, sign.y + 4), ink);
  EXPECT_NE(canvas.ColourAt(sign.x + 4, sign.y + 2), ink);
  sheet.SetIsCollapsed(1, true);
  EXPECT_EQ(Painted(sheet).ColourAt(sign.x + 4, sign.y + 2), ink);
  const auto picture = testing::MakePicture("any");
  sheet.SetNodeClosedPicture(picture);
  EXPECT_EQ(Painted(sheet).pictures.size(), 1U);
  sheet.SetOutlineBar(platform::OutlineBarStyle::kNone);
  EXPECT_EQ(Painted(sheet).pictures.size(), 0U);
}

TEST(Painter, IndentsLinesAsFarAsTheTextOfTheirNode) {
  GridSheet sheet;
  Fill(sheet, 100, 2);
  const RecordingCanvas canvas = Painted(sheet);
  const int column = sheet.view().geometry().CellRect(1, 2).x;
  int indented = 0;
  for (const auto& text : canvas.texts) indented += text.rect.x == column + 16 + 4 ? 1 : 0;
  EXPECT_EQ(indented, 9);
}

TEST(Painter, DrawsTheLinesThatTheStyleNames) {
  GridSheet sheet;
  Fill(sheet, 100, 0);
  const auto colour = sheet.ColourOf(GridColour::kGridColor);
  const Rect cell = sheet.view().geometry().CellRect(3, 2);
  const auto has_row_line = [&] { return Painted(sheet).ColourAt(cell.x + 50, cell.bottom() - 1) == colour; };
  const auto has_column_line = [&] { return Painted(sheet).ColourAt(cell.right() - 1, cell.y + 10) == colour; };
  EXPECT_TRUE(has_row_line() && has_column_line());
  sheet.SetGridLines(GridLineStyle::kFlatHorz);
  EXPECT_TRUE(has_row_line() && !has_column_line());
  sheet.SetGridLines(GridLineStyle::kFlatVert);
  EXPECT_TRUE(!has_row_line() && has_column_line());
  sheet.SetGridLines(GridLineStyle::kRaised);
  EXPECT_TRUE(has_row_line() && has_column_line());
  sheet.SetGridLines(GridLineStyle::kNone);
  EXPECT_TRUE(!has_row_line() && !has_column_line());
}

TEST(Painter, TakesADozenCallsAPaneWhateverTheNumberOfRows) {
  const auto calls = [](int rows) {
    GridSheet sheet;
    Fill(sheet, rows, 10);
    sheet.view().SetSize({1400, 1000}, 1.0);
    const RecordingCanvas canvas = Painted(sheet);
    return std::pair(canvas.calls, canvas.texts.size());
  };
  EXPECT_EQ(calls(1000000), calls(1000));
  EXPECT_LT(calls(1000).first, 40);
}

TEST(Snapshot, StaysAsItWasWhenTheSheetChanges) {
  GridSheet sheet;
  Fill(sheet, 10, 0);
  sheet.SetTextMatrix(1, 1, "before");
  const Snapshot snapshot = Snapshot::Of(sheet.view());
  sheet.SetTextMatrix(1, 1, "after");
  sheet.SetCols(1);
  RecordingCanvas canvas;
  Paint(snapshot, canvas);
  EXPECT_NE(canvas.Find("before"), nullptr);
  EXPECT_EQ(canvas.Find("after"), nullptr);
}

TEST(Snapshot, HoldsTheCellsInSightOnly) {
  GridSheet sheet;
  Fill(sheet, 1000000, 36);
  sheet.SetTopRow(500000);
  const Snapshot snapshot = Snapshot::Of(sheet.view());
  size_t cells = 0;
  for (const SnapshotPane& pane : snapshot.panes()) cells += pane.content.size();
  EXPECT_LE(cells, 11U * 5U);
}

TEST(Snapshot, CutsTextsThatNobodyCanSeeWhole) {
  GridSheet sheet;
  Fill(sheet, 1, 0);
  std::string longest;
  for (int count = 0; count < 100000; ++count) longest += "库";
  sheet.SetTextMatrix(1, 1, longest);
  const RecordingCanvas canvas = Painted(sheet);
  for (const auto& text : canvas.texts) {
    EXPECT_LE(text.text.size(), 4096U);
    EXPECT_TRUE(base::IsCleanUtf8(text.text));
  }
}

TEST(Painter, PaintsAnEmptyGridAndAGridWithoutRowsOrColumns) {
  GridSheet sheet;
  EXPECT_GT(Painted(sheet).fills.size(), 0U);
  sheet.SetRows(0);
  sheet.SetCols(0);
  EXPECT_GT(Painted(sheet).fills.size(), 0U);
  sheet.view().SetSize({0, 0}, 1.0);
  EXPECT_EQ(Painted(sheet).fills.size(), 0U);
}

}  // namespace
}  // namespace stockbook::sheet
