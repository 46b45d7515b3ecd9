// SPDX-License-Identifier: MIT
// Rules of the layout and of the rows at their limits.
#include <gtest/gtest.h>

#include "base/number.h"
#include "grid/bill_kinds.h"
#include "grid/column_layout.h"
#include "grid/fake_rows.h"
#include "grid/laid_out_grid.h"
#include "grid/product_names.h"
#include "grid/row_heights.h"
#include "grid/statistics.h"
#include "support/fake_surroundings.h"
#include "support/faulty_grid.h"

namespace stockbook::grid {
namespace {

using testing::FakeImages;
using testing::FakeTextMetrics;
using testing::MakePicture;
using testing::NameOf;

class GridRules : public LaidOutGrid {
 protected:
  // `counts` rows of each bill name, one after the other, all with a bill key.
  void Bills(const std::vector<std::pair<const char*, int>>& counts) {
    int rows = 1;
    for (const auto& [name, count] : counts) rows += count;
    sheet_.SetRows(rows);
    int row = 1;
    for (const auto& [name, count] : counts) {
      for (int bill = 0; bill < count; ++bill, ++row) {
        Put(row, "BillName", name);
        Put(row, "BillID", "1");
      }
    }
  }
};

TEST_F(GridRules, TheHeaderRowIsCentredBothWays) {
  struct Watched : testing::FaultyGrid {
    using FaultyGrid::FaultyGrid;
    void SetCellAlignment(const platform::CellRange& range, platform::Alignment alignment) override {
      EXPECT_EQ(alignment, platform::Alignment::kCenterCenter);
      aligned.push_back(range);
      FaultyGrid::SetCellAlignment(range, alignment);
    }
    std::vector<platform::CellRange> aligned;
  } grid(sheet_);
  ColumnLayout(grid, settings_, hidden_).FormatColumns("BillNo");
  ASSERT_EQ(grid.aligned.size(), 1U);
  EXPECT_EQ(grid.aligned[0], (platform::CellRange{0, 0, 1, kColumnCount}));
}

TEST_F(GridRules, TheFilterHidesOnlyTheColumnsThatAskTheList) {
  settings_.journal_type = base::SupplierJournal;
  settings_.allow_qty2 = settings_.allow_inv = true;
  settings_.fields_filter = "RevQty|RevQty2|StoQty|StoQty2|Tax|BillNo|Explain|ProductName|Price|";
  Format();
  for (const char* key : {"RevQty", "RevQty2", "StoQty", "StoQty2", "Tax", "BillNo", "Explain"})
    EXPECT_FALSE(Hidden(key)) << key;
  EXPECT_TRUE(Hidden("ProductName") && Hidden("Price"));
}

TEST_F(GridRules, OptionalColumnsAreMadeHiddenWhateverTheListSays) {
  for (const char* key : {"Field0", "Field6", "Depot", "Enterprise", "Project", "ProjNo", "Inputor", "InputDate",
                          "Auditor", "AuditDate"}) {
    EXPECT_FALSE(hidden_.IsHiddenKey(key)) << key;
    EXPECT_TRUE(Hidden(key)) << key;
    sheet_.SetColHidden(sheet_.ColIndex(key), false);
  }
  Format();
  EXPECT_TRUE(Hidden("Field0") && Hidden("AuditDate"));
}

TEST(HiddenKeys, StandBetweenBarsFromTheFirstOnAndGoHoweverOftenTheyStand) {
  HiddenKeys keys;
  keys.HideKey("Tax");
  EXPECT_EQ(keys.Text(), "|Tax|");
  keys.Assign("|Tax|Tax|Price|Tax|");
  keys.ShowKey("Tax");
  EXPECT_EQ(keys.Text(), "|Price|");
}

TEST_F(GridRules, AColumnWithoutCaptionShowsItsKeyUnlessItIsTheFirst) {
  ColumnLayout layout(sheet_, settings_, hidden_);
  layout.AddColumn(0, {"SeqNo", "", "", false, platform::DataType::kLong, platform::Alignment::kCenterCenter, 200});
  layout.AddColumn(9, {"New", "", "", true, platform::DataType::kLong, platform::Alignment::kCenterCenter, 200});
  EXPECT_EQ(sheet_.TextMatrix(0, 0), "");
  EXPECT_EQ(sheet_.ColKey(9), "New");
  EXPECT_EQ(sheet_.TextMatrix(0, 9), "New");
  EXPECT_EQ(sheet_.Cols(), kColumnCount + 1);
}

TEST_F(GridRules, BillsAreCountedUpToThirtyTwoThousandSevenHundredAndSixtySeven) {
  Bills({{"入库单", 32767}});
  EXPECT_EQ(Statistics(sheet_).substr(0, Statistics(sheet_).find("\r\n")), "单据共：32767 张");
  Bills({{"入库单", 32768}});
  EXPECT_THROW(Statistics(sheet_), base::ArithmeticError);
}

TEST_F(GridRules, TheTotalOfTheBillsOverflowsLikeItsCounters) {
  Bills({{"入库单", 16000}, {"出库单", 16000}, {"调拨单", 768}});
  EXPECT_THROW(Statistics(sheet_), base::ArithmeticError);
  Put(1, "BillName", "采购单");
  EXPECT_EQ(Statistics(sheet_),
            "单据共：32767 张\r\n  其中:\r\n    入库单:15999张\r\n    出库单:16000张\r\n    调拨单:768张");
}

TEST_F(GridRules, BillsAreCountedInEveryRowWithAPositiveBillKeyWhatItIsAndSkippedWithANegativeOne) {
  Bills({{"调拨单", 3}});
  Put(1, "BillID", "-1");
  Put(2, "BillID", "0.5");
  EXPECT_EQ(Statistics(sheet_), "单据共：2 张\r\n  其中:\r\n    入库单:0张\r\n    出库单:0张\r\n    调拨单:2张");
}

TEST_F(GridRules, RowsAreSizedByTheSampleTextInTheGridsFont) {
  struct Metrics : FakeTextMetrics {
    double TextHeightTwips(std::string_view text, const platform::Font& font) const override {
      asked.push_back(std::string(text) + " " + font.name);
      return 200.9;
    }
    mutable std::vector<std::string> asked;
  } metrics;
  testing::FakeRows rows(2);
  const RowSizes sizes = SizeRows(rows, metrics, {.name = "Some Sans"});
  ASSERT_FALSE(metrics.asked.empty());
  for (const std::string& asked : metrics.asked) EXPECT_EQ(asked, "Tallomere Some Sans");
  EXPECT_EQ(sizes.data, 260) << "the fraction is dropped";
  EXPECT_EQ(sizes.sum, 520);
  EXPECT_EQ(sizes.title, 460) << "the text height and the height the row had, truncated";
}

TEST_F(GridRules, ColumnsGetTheFontTheyAreGiven) {
  sheet_.SetRows(2);
  sheet_.SetRedraw(false);
  SetColumnsFont(sheet_, sheet_, "Price|Quantity", "Some Mono");
  EXPECT_EQ(sheet_.CellFontName(1, sheet_.ColIndex("Price")), "Some Mono");
  EXPECT_EQ(sheet_.CellFontName(1, sheet_.ColIndex("Quantity")), "Some Mono");
  EXPECT_FALSE(sheet_.Redraw()) << "as it was before";
}

// Keeps the tags that are set.
class TagGrid : public testing::FaultyGrid {
 public:
  using FaultyGrid::FaultyGrid;
  void SetTag(std::string_view tag) override {
    tags.emplace_back(tag);
    FaultyGrid::SetTag(tag);
  }
  void SetTextMatrix(int row, int column, std::string_view text) override {
    written_busy = written_busy && Tag() == "Refresh_ProductNames" && !Redraw();
    FaultyGrid::SetTextMatrix(row, column, text);
  }
  std::vector<std::string> tags;
  bool written_busy = true;
};

TEST_F(GridRules, ProductNamesAreRewrittenUnderTheirMarkerWithRedrawOff) {
  sheet_.SetRows(2);
  Put(1, "pdID", "7");
  sheet_.SetTag("Load");
  sheet_.SetRedraw(false);
  TagGrid grid(sheet_);
  RefreshProductNames(grid, grid);
  EXPECT_EQ(grid.tags, (std::vector<std::string>{"Refresh_ProductNames", "Load"}));
  EXPECT_TRUE(grid.written_busy);
  EXPECT_FALSE(sheet_.Redraw()) << "as it was before";
}

TEST_F(GridRules, ThePictureOfABillFollowsKindAndAudit) {
  Pictures pictures;
  pictures.rev = MakePicture("rev");
  pictures.rev_audited = MakePicture("rev audited");
  pictures.iss = MakePicture("iss");
  pictures.iss_audited = MakePicture("iss audited");
  pictures.shift = MakePicture("shift");
  pictures.shift_audited = MakePicture("shift audited");
  pictures.bill = MakePicture("bill");
  pictures.bill_audited = MakePicture("bill audited");
  const FakeImages images;
  const BillKinds kinds(sheet_, pictures, images, nullptr, "BillNo");
  const std::pair<const char*, std::string> names[] = {{"入库单", "rev"},  {"出库单", "iss"},  {"调拨单", "shift"},
                                                       {"采购单", "bill"}, {"销售单", "bill"}, {"", "bill"}};
  sheet_.SetRows(2);
  for (const auto& [name, picture] : names) {
    Put(1, "BillName", name);
    Put(1, "Auditor", "");
    EXPECT_EQ(NameOf(kinds.BillKindPicture(1, sheet_)), picture);
    Put(1, "Auditor", " ");
    EXPECT_EQ(NameOf(kinds.BillKindPicture(1, sheet_)), picture + " audited") << "a single blank counts as audited";
  }
}

TEST_F(GridRules, TheRowAfterTheLastStandsForTheCurrentOne) {
  Pictures pictures;
  pictures.rev = MakePicture("rev");
  pictures.bill = MakePicture("bill");
  const FakeImages images;
  sheet_.SetRows(4);
  Put(2, "BillName", "入库单");
  sheet_.Select(2, 3);
  const BillKinds kinds(sheet_, pictures, images, nullptr, "BillNo");
  EXPECT_EQ(NameOf(kinds.BillKindPicture(4, sheet_)), "rev");
  EXPECT_EQ(NameOf(kinds.BillKindPicture(-1, sheet_)), "rev");
  EXPECT_EQ(NameOf(kinds.BillKindPicture(3, sheet_)), "bill");
  EXPECT_EQ(NameOf(kinds.BillKindPicture(1, sheet_)), "bill");
}

TEST_F(GridRules, TheImageOfABillStandsInTheColumnOfTheOutlineKey) {
  const FakeImages images;
  const Pictures pictures;
  sheet_.SetRows(2);
  Put(1, "BillName", "入库单");
  BillKinds(sheet_, pictures, images, nullptr, "Explain").DecorateRow(1);
  EXPECT_EQ(NameOf(sheet_.CellPicture(1, sheet_.ColIndex("Explain"))), "RevBill");
  EXPECT_EQ(sheet_.CellPicture(1, sheet_.ColIndex("BillNo")), nullptr);
}

TEST_F(GridRules, FoldingEverythingTouchesNoRowThatIsNoNode) {
  sheet_.SetRows(6);
  for (const int node : {1, 4}) sheet_.SetIsSubtotal(node, true);
  for (const int line : {2, 3, 5}) sheet_.SetRowOutlineLevel(line, 1);
  sheet_.Select(4, 3);
  sheet_.SetTopRow(1);
  sheet_.CollapseAll();
  EXPECT_TRUE(sheet_.IsCollapsed(1) && sheet_.IsCollapsed(4));
  for (const int line : {2, 3, 5}) EXPECT_FALSE(sheet_.IsSubtotal(line) || sheet_.IsCollapsed(line)) << line;
  EXPECT_EQ(sheet_.Row(), 4);
  EXPECT_EQ(sheet_.TopRow(), 1);
}

}  // namespace
}  // namespace stockbook::grid
