// SPDX-License-Identifier: MIT
// What the grid looks like: each state is a picture of docs/grid.md.
#include "pictures/picture.h"
#include "sheet/columns.h"
#include "stockbook/qt/images.h"
#include "support/sample_ledger.h"

namespace stockbook::pictures {
namespace {

using namespace testing;
using platform::CellRange;
using platform::GridColour;
using platform::PictureAlignment;

class GridPictures : public PictureTest {
 protected:
  int RowOf(size_t record) const { return sheet_.RowOfRecord(record); }
};

TEST_F(GridPictures, AJournalAtRest) {
  FillLedger();
  ExpectPicture("journal");
}

TEST_F(GridPictures, FrozenColumnsStayWhileTheOthersAreScrolledSideways) {
  FillLedger();
  sheet_.SetFrozenCols(kLedgerBill);
  sheet_.view().SetSize({kUsualSize.width(), kUsualSize.height()}, 1);
  sheet_.view().ScrollTo({214, 0});
  ExpectPicture("frozen");
}

TEST_F(GridPictures, ClosedPeriodsLeaveTheirTotalsInSight) {
  FillLedger(6, 3);
  sheet_.CollapseAll();
  sheet_.SetIsCollapsed(RowOf(3) - 1, false);
  sheet_.Select(RowOf(3) - 1, kLedgerBill);
  ExpectPicture("collapsed");
}

TEST_F(GridPictures, ASelectionOverSeveralCellsWithTheCurrentOneInItsFrame) {
  FillLedger();
  sheet_.SelectRange(RowOf(1), kLedgerExplain, RowOf(4), kLedgerRevQty);
  ExpectPicture("selection");
}

TEST_F(GridPictures, TheHotRowHasItsOwnColours) {
  FillLedger();
  const int row = RowOf(3);
  sheet_.Select(row, kLedgerExplain);
  sheet_.SetCellColors({row, 0, row + 1, sheet_.Cols()}, 0x00B8E4FF, 0x00203A60);
  ExpectPicture("hot_row");
}

TEST_F(GridPictures, TotalsOfTwoLinesWithNegativeNumbersInRed) {
  FillLedger(4, 3);
  for (int row = sheet_.NextSubtotal(0); row >= 0; row = sheet_.NextSubtotal(row + 1)) {
    if (sheet_.RowHeight(row) < 500) continue;
    sheet_.SetTextMatrix(row, kLedgerRevAcc, "1,180.00\n-3,402.75");
  }
  sheet_.SetColHidden(kLedgerExplain, true);
  sheet_.SetColHidden(kLedgerPrice, true);
  ExpectPicture("totals");
}

TEST_F(GridPictures, CutOffNumbersAreHashesAndTextsEndInAnEllipsis) {
  FillLedger();
  sheet_.SetColWidth(kLedgerBill, 150 * 15);
  sheet_.SetColWidth(kLedgerExplain, 84 * 15);
  sheet_.SetColWidth(kLedgerRevAcc, 52 * 15);
  sheet_.SetColWidth(kLedgerIssAcc, 46 * 15);
  ExpectPicture("cut_off");
}

TEST_F(GridPictures, AColumnOnItsWayHasAMarkWhereItWouldGo) {
  FillLedger();
  sheet_.view().SetDropColumn(kLedgerRevQty);
  ExpectPicture("moving");
}

TEST_F(GridPictures, TheDarkColours) {
  FillLedger();
  sheet::Appearance dark = sheet::Appearance::Dark();
  dark.font = sheet_.appearance().font;
  dark.scroll_bars = platform::ScrollBarsSetting::kNone;
  sheet_.SetAppearance(dark);
  sheet_.SelectRange(RowOf(1), kLedgerExplain, RowOf(3), kLedgerPrice);
  ExpectPicture("dark");
}

TEST_F(GridPictures, SharpAtAScaleOfOneAndAHalf) {
  FillLedger();
  ExpectPicture("scale", Seen({440, 200}, 1.5));
}

TEST_F(GridPictures, LinesTreesAndPicturesOfOtherStyles) {
  FillLedger();
  sheet_.SetGridLines(platform::GridLineStyle::kInset);
  sheet_.SetGridLinesFixed(platform::GridLineStyle::kRaised);
  sheet_.SetOutlineBar(platform::OutlineBarStyle::kSimpleLeaf);
  const qt::QtImages images;
  int column = kLedgerExplain;
  for (const auto alignment : {PictureAlignment::kLeftCenter, PictureAlignment::kCenterCenter,
                               PictureAlignment::kRightCenter, PictureAlignment::kRightTop}) {
    const int row = RowOf(static_cast<size_t>(column - kLedgerExplain));
    if (alignment == PictureAlignment::kCenterCenter) sheet_.SetTextMatrix(row, kLedgerExplain, "");
    const bool mark = alignment == PictureAlignment::kRightTop;
    sheet_.SetCellPicture({row, kLedgerExplain, row + 1, kLedgerExplain + 1}, images.Find(mark ? "Mark" : "Supplier"),
                          alignment);
    ++column;
  }
  ExpectPicture("styles");
}

TEST_F(GridPictures, ADisabledViewIsDimmed) {
  FillLedger();
  ExpectPicture("disabled", Seen(kUsualSize, 1, View::kDisabled));
}

TEST_F(GridPictures, AnEmptyJournalShowsItsCaptions) {
  FillLedger();
  sheet_.SetRows(sheet_.FixedRows());
  ExpectPicture("empty");
}

}  // namespace
}  // namespace stockbook::pictures
