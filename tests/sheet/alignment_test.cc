// SPDX-License-Identifier: MIT
// Where texts and numbers are in their cells.
#include <gtest/gtest.h>

#include "sheet/columns.h"
#include "sheet/paint/painter.h"
#include "sheet/recording_canvas.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::sheet {
namespace {

using platform::Alignment;
using platform::DataType;
using test::Doubles;
using test::Numbers;
using test::RecordingCanvas;
using test::Texts;
using test::Together;

RecordingCanvas Aligned(const GridSheet& sheet) {
  RecordingCanvas canvas;
  Paint(Snapshot::Of(sheet.view()), canvas);
  return canvas;
}

TEST(TextsInCells, PutsNumbersRightAndTextsLeftWhereTheColumnLeavesItOpen) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Texts({"text"}), Doubles({12.5}), Texts({"-"})), 1);
  sheet.SetColDataType(2, DataType::kDouble);
  sheet.SetColDataType(3, DataType::kDouble);
  const RecordingCanvas canvas = Aligned(sheet);
  EXPECT_EQ(canvas.Find("text")->align, HorizontalAlign::kLeft);
  EXPECT_EQ(canvas.Find("12.5")->align, HorizontalAlign::kRight);
  EXPECT_EQ(canvas.Find("-")->align, HorizontalAlign::kLeft);
  sheet.SetColAlignment(1, Alignment::kRightCenter);
  sheet.SetCellAlignment({1, 2, 2, 3}, Alignment::kCenterCenter);
  EXPECT_EQ(Aligned(sheet).Find("text")->align, HorizontalAlign::kRight);
  EXPECT_EQ(Aligned(sheet).Find("12.5")->align, HorizontalAlign::kCenter);
}

TEST(TextsInCells, PutsLoadedNumbersRightWithoutBeingToldWhatTheyAre) {
  GridSheet sheet;
  sheet.LoadColumns(Together(Texts({"7"}), Doubles({12.5}), Numbers(1), Texts({"8.5"})), 1);
  sheet.SetColFormat(4, "0.00");
  const RecordingCanvas canvas = Aligned(sheet);
  EXPECT_EQ(canvas.Find("7")->align, HorizontalAlign::kLeft) << "a text that looks like a number";
  EXPECT_EQ(canvas.Find("12.5")->align, HorizontalAlign::kRight);
  EXPECT_EQ(canvas.Find("0")->align, HorizontalAlign::kRight);
  EXPECT_EQ(canvas.Find("8.50")->align, HorizontalAlign::kRight) << "a number to its format";
  sheet.SetColAlignment(2, Alignment::kLeftCenter);
  sheet.SetColDataType(3, DataType::kString);
  EXPECT_EQ(Aligned(sheet).Find("12.5")->align, HorizontalAlign::kLeft);
  EXPECT_EQ(Aligned(sheet).Find("0")->align, HorizontalAlign::kLeft);
}

}  // namespace
}  // namespace stockbook::sheet
