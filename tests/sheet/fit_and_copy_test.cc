// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>

#include "sheet/columns.h"
#include "sheet/geometry/outline_metrics.h"
#include "sheet/input/fit.h"
#include "sheet/paint/cell_tip.h"
#include "sheet/recording_canvas.h"
#include "sheet/selection/selection_text.h"
#include "sheet/sheet_in_view.h"
#include "support/fake_ports.h"

namespace stockbook::sheet {
namespace {

using test::Numbers;
using test::Periods;
using test::RecordingCanvas;
using test::Together;

constexpr int kPadding = 4;
constexpr int kLine = 1;

class Viewer : public test::IdleViewer {
 public:
  TextMeasure* Measure() override { return &canvas; }
  RecordingCanvas canvas;  // every character is 7 wide, every line 14 high
};

// A caption row, ten rows below it in view, columns of 100 pixels.
class FitAndCopy : public test::SheetInView {
 protected:
  FitAndCopy() : SheetInView(Together(Periods(1000, 5), Numbers(1000))) {
    sheet.SetColWidth(0, 1500);
    sheet.SetTextMatrix(0, 1, "期间");
    sheet.SetTextMatrix(0, 2, "数\r\n量");
    sheet.view().SetViewer(&viewer);
    sheet.view().SetClipboard(&desk);
    desk.text = "before";
  }
  ~FitAndCopy() override { sheet.view().SetViewer(nullptr); }

  int PixelsOf(int column) const { return static_cast<int>(sheet.view().geometry().CellRect(0, column).width); }
  Point EdgeOf(int column) const {
    const Rect caption = sheet.view().geometry().CellRect(0, column);
    return {caption.right() - 1, caption.y + caption.height / 2};
  }

  Viewer viewer;
  testing::FakeClipboard desk;
};

TEST_F(FitAndCopy, ADoubleClickOnACaptionsEdgeFitsTheColumnToTheTextsInView) {
  sheet.SetTextMatrix(4, 1, "二十个字符的文本正好二十个字符的文本正好");
  sheet.SetTextMatrix(900, 1, std::string(300, 'x'));  // far out of view
  mouse.DoubleClick({MouseButton::kLeft, {}, EdgeOf(1)});
  EXPECT_EQ(PixelsOf(1), 20 * RecordingCanvas::kCharacterWidth + 2 * kPadding + kLine);
  EXPECT_TRUE(CellTip::At(sheet.view(), viewer.canvas, {150, 90}).text.empty());
}

TEST_F(FitAndCopy, AFittedColumnIsNeverWiderThanTheViewNorNarrowerThanItsCaption) {
  sheet.SetTextMatrix(4, 1, std::string(3000, 'x'));
  FitColumn(sheet.view(), 1);
  EXPECT_EQ(PixelsOf(1), 430);
  for (int row = 1; row < 20; ++row) sheet.SetTextMatrix(row, 1, "a");
  sheet.SetTextMatrix(0, 1, "captions");
  FitColumn(sheet.view(), 1);
  EXPECT_EQ(PixelsOf(1), 8 * RecordingCanvas::kCharacterWidth + 2 * kPadding + kLine);
}

TEST_F(FitAndCopy, FittingCountsTheTreeAndItsIndent) {
  sheet.GroupBy(1, 1, "%s");
  sheet.SetOutlineCol(1);
  FitColumn(sheet.view(), 1);
  const int text = 6 * RecordingCanvas::kCharacterWidth;  // 200001
  EXPECT_EQ(PixelsOf(1), text + 2 * kPadding + kLine + OutlineMetrics::Of(1).LineIndent(1));
}

TEST_F(FitAndCopy, AllShownColumnsAreFittedToAllTheirTexts) {
  constexpr int kHidden = 3;
  sheet.SetCols(8);
  for (int column = kHidden; column < sheet.Cols(); ++column) sheet.SetColWidth(column, 1500);
  const int last = sheet.Cols() - 1;
  sheet.SetTextMatrix(900, 1, std::string(25, 'x'));   // far below the view
  sheet.SetTextMatrix(5, last, std::string(30, 'x'));  // to the right of it
  sheet.SetColHidden(kHidden, true);
  FitColumns(sheet.view());
  EXPECT_EQ(PixelsOf(1), 25 * RecordingCanvas::kCharacterWidth + 2 * kPadding + kLine);
  EXPECT_EQ(PixelsOf(last), 30 * RecordingCanvas::kCharacterWidth + 2 * kPadding + kLine);
  EXPECT_EQ(sheet.ColWidth(kHidden), 1500) << "hidden ones keep their widths";
  EXPECT_EQ(sheet.ColWidth(0), 1500) << "so do fixed ones";
  sheet.SetTextMatrix(900, 1, std::string(3000, 'x'));
  FitColumns(sheet.view());
  EXPECT_EQ(PixelsOf(1), 430) << "at most the width of the view";
}

TEST_F(FitAndCopy, ARowIsFittedToItsLines) {
  sheet.SetTextMatrix(3, 2, "1\n2\n3");
  FitRow(sheet.view(), 3);
  EXPECT_EQ(sheet.view().geometry().CellRect(3, 0).height, 3 * RecordingCanvas::kLineHeight + kLine);
}

TEST_F(FitAndCopy, AnObserverMayRefuseToFit) {
  class Refuser : public platform::GridObserver {
    platform::Verdict BeforeUserResize(int, int) override { return platform::Verdict::kRefuse; }
  } refuser;
  sheet.SetObserver(&refuser);
  mouse.DoubleClick({MouseButton::kLeft, {}, EdgeOf(1)});
  EXPECT_EQ(PixelsOf(1), 100);
  sheet.SetObserver(nullptr);
}

TEST_F(FitAndCopy, NothingIsFittedOutOfViewOrWithoutAMeasure) {
  FitColumn(sheet.view(), 7);
  FitColumn(sheet.view(), -1);
  FitRow(sheet.view(), 900);
  sheet.view().SetViewer(nullptr);
  FitColumn(sheet.view(), 1);
  EXPECT_EQ(PixelsOf(1), 100);
  EXPECT_EQ(sheet.RowHeight(900), sheet.RowHeight(1));
}

TEST_F(FitAndCopy, ATipTellsTheWholeTextOfACellThatIsCutOff) {
  sheet.SetTextMatrix(1, 1, std::string(30, 'x'));
  const Rect cell = sheet.view().geometry().CellRect(1, 1);
  const CellTip tip = CellTip::At(sheet.view(), viewer.canvas, {cell.x + 5, cell.y + 5});
  EXPECT_EQ(tip.text, std::string(30, 'x'));
  EXPECT_EQ(tip.cell, cell);
  EXPECT_TRUE(CellTip::At(sheet.view(), viewer.canvas, {cell.x + 5, cell.bottom() + 5}).text.empty());
  EXPECT_TRUE(CellTip::At(sheet.view(), viewer.canvas, {-5, 5}).text.empty());
  EXPECT_TRUE(CellTip::At(sheet.view(), viewer.canvas, {425, 5}).text.empty());
}

TEST_F(FitAndCopy, ATipTellsTheNumberBehindHashesAndTheLinesThatDoNotFit) {
  sheet.SetColDataType(2, platform::DataType::kDouble);
  sheet.SetColFormat(2, "#,##0.00");
  sheet.SetTextMatrix(1, 2, "123456789012345");
  sheet.SetTextMatrix(2, 1, "一\n二\n三");
  const Rect number = sheet.view().geometry().CellRect(1, 2);
  const Rect lines = sheet.view().geometry().CellRect(2, 1);
  EXPECT_EQ(CellTip::At(sheet.view(), viewer.canvas, {number.x + 5, number.y + 5}).text, "123,456,789,012,345.00");
  EXPECT_EQ(CellTip::At(sheet.view(), viewer.canvas, {lines.x + 5, lines.y + 5}).text, "一\n二\n三");
}

TEST_F(FitAndCopy, ControlCCopiesTheCaptionsAndTheShownCellsOfTheRange) {
  sheet.SetColDataType(2, platform::DataType::kDouble);
  sheet.SetColFormat(2, "#,##0.00");
  sheet.SetTextMatrix(2, 2, "1234.5");
  sheet.SetRowHidden(3, true);
  sheet.SelectRange(2, 1, 4, 2);
  EXPECT_TRUE(keyboard.Press({Key::kC, {Modifiers::kControl}}));
  EXPECT_EQ(desk.text, "期间\t数量\r\n200001\t1,234.50\r\n200001\t3.00");
}

TEST_F(FitAndCopy, ASingleCellIsCopiedWithItsCaptionAndNoLineEnd) {
  sheet.Select(5, 1);
  EXPECT_TRUE(keyboard.Press({Key::kInsert, {Modifiers::kControl}}));
  EXPECT_EQ(desk.text, "期间\r\n200001");
}

TEST_F(FitAndCopy, ASelectionThatEndsInAHiddenColumnOrRowEndsInATabOrALineEnd) {
  sheet.SetColHidden(2, true);
  sheet.SetRowHidden(3, true);
  sheet.SelectRange(2, 1, 3, 2);
  EXPECT_EQ(SelectionText(sheet, sheet.view().selection()), "期间\t\r\n200001\t\r\n");
}

TEST_F(FitAndCopy, NothingIsCopiedWithoutAClipboardOrACell) {
  sheet.view().SetClipboard(nullptr);
  EXPECT_FALSE(keyboard.Press({Key::kC, {Modifiers::kControl}}));
  sheet.view().SetClipboard(&desk);
  EXPECT_FALSE(keyboard.Press({Key::kC, {}}));
  sheet.SetRows(1);
  EXPECT_FALSE(keyboard.Press({Key::kC, {Modifiers::kControl}}));
  EXPECT_EQ(desk.text, "before");
}

TEST_F(FitAndCopy, CopyingARangeTwiceOverInsertedAndRemovedRowsTellsWhatIsShown) {
  sheet.AddItem("\t合计\t9", 3);
  sheet.RemoveItem(4);
  sheet.SelectRange(1, 1, 5, 1);
  EXPECT_EQ(SelectionText(sheet, sheet.view().selection()), "期间\r\n200001\r\n200001\r\n合计\r\n200001\r\n200001");
}

}  // namespace
}  // namespace stockbook::sheet
