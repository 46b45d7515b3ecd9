// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <functional>

#include "grid/bill_kinds.h"
#include "grid/column_layout.h"
#include "grid/fake_rows.h"
#include "grid/laid_out_grid.h"
#include "grid/product_names.h"
#include "grid/row_heights.h"
#include "grid/statistics.h"
#include "stockbook/base/value.h"
#include "stockbook/columns/column_builder.h"
#include "support/fake_surroundings.h"
#include "support/faulty_grid.h"

namespace stockbook::grid {
namespace {

using testing::FakeImages;
using testing::FakeTextMetrics;
using testing::MakePicture;
using testing::NameOf;

// A laid-out sheet with `rows` empty data rows.
class Rows : public LaidOutGrid {
 protected:
  explicit Rows(int rows = 4) {
    sheet_.SetRows(1 + rows);
    pictures_.bill = MakePicture("bill");
    pictures_.bill_audited = MakePicture("bill audited");
    pictures_.rev = MakePicture("rev");
    pictures_.rev_audited = MakePicture("rev audited");
    pictures_.iss = MakePicture("iss");
    pictures_.shift = MakePicture("shift");
  }
  std::string Picture(int row, const char* key) { return NameOf(sheet_.CellPicture(row, sheet_.ColIndex(key))); }
  BillKinds Kinds() { return BillKinds(sheet_, pictures_, images_, MakePicture("mark"), "BillNo"); }

  Pictures pictures_;
  FakeImages images_;
};

TEST_F(Rows, ShowTheHostsPictureOfThreeSpecialKindsAndTheGenericOneElse) {
  Put(1, "BillName", "入库单");
  Put(2, "BillName", "采购单");
  Put(3, "BillName", "调拨单");
  EXPECT_EQ(NameOf(Kinds().BillKindPicture(1, sheet_)), "rev");
  EXPECT_EQ(NameOf(Kinds().BillKindPicture(2, sheet_)), "bill");
  EXPECT_EQ(NameOf(Kinds().BillKindPicture(3, sheet_)), "shift");
  EXPECT_EQ(NameOf(Kinds().BillKindPicture(4, sheet_)), "bill");
  Put(3, "Auditor", "王");
  EXPECT_EQ(NameOf(Kinds().BillKindPicture(3, sheet_)), "") << "the host set no audited picture for transfers";
}

TEST_F(Rows, TakeTheCurrentRowForARowThatIsNoDataRow) {
  Put(2, "BillName", "入库单");
  sheet_.Select(2, 3);
  EXPECT_EQ(NameOf(Kinds().BillKindPicture(0, sheet_)), "rev");
  EXPECT_EQ(NameOf(Kinds().BillKindPicture(99, sheet_)), "rev");
}

TEST_F(Rows, DistinguishFiveKindsByTheirImages) {
  const char* names[] = {"入库单", "采购单", "出库单", "销售单", "调拨单", "入库单 "};
  const char* images[] = {"RevBill", "BuyBill", "IssBill", "SaleBill", "ShiftBill", "Bill"};
  for (size_t at = 0; at < std::size(names); ++at) {
    Put(1, "BillName", names[at]);
    Put(1, "Auditor", "");
    Kinds().DecorateRow(1);
    EXPECT_EQ(Picture(1, "BillNo"), images[at]);
    Put(1, "Auditor", " ");
    Kinds().DecorateRow(1);
    EXPECT_EQ(Picture(1, "BillNo"), std::string(images[at]) + "1") << "a blank counts as audited";
  }
}

TEST_F(Rows, CallThePartnerOfANamelessBillASupplier) {
  Put(1, "Enterprise", "某某商行");
  Kinds().DecorateRow(1);
  EXPECT_EQ(Picture(1, "BillNo"), "Bill");
  EXPECT_EQ(Picture(1, "Enterprise"), "Supplier");
  Put(1, "BillName", "销售单");
  Kinds().DecorateRow(1);
  EXPECT_EQ(Picture(1, "Enterprise"), "Customer");
  Put(1, "BillName", "购单");
  Kinds().DecorateRow(1);
  EXPECT_EQ(Picture(1, "Enterprise"), "Supplier") << "any piece of the supplier bills' names counts";
}

TEST_F(Rows, ShowAnAuditedPurchaseTwoWays) {
  Put(1, "BillName", "采购单");
  Put(1, "Auditor", "王");
  Kinds().DecorateRow(1);
  EXPECT_EQ(Picture(1, "BillNo"), "BuyBill1");
  EXPECT_EQ(NameOf(Kinds().BillKindPicture(1, sheet_)), "bill audited");
}

TEST_F(Rows, MarkAnyOtherIdButZeroAndOnlyPositiveProducts) {
  const char* other_ids[] = {"0", "", "-3", "12"};
  for (int row = 1; row <= 4; ++row) {
    Put(row, "OtherID", other_ids[row - 1]);
    Put(row, "pdID", row == 1 ? "1" : row == 2 ? "0" : row == 3 ? "-1" : "");
    Kinds().DecorateRow(row);
  }
  EXPECT_EQ(Picture(1, "Quantity") + Picture(2, "Quantity") + Picture(3, "Quantity") + Picture(4, "Quantity"),
            "markmark");
  EXPECT_EQ(Picture(3, "IssQty"), "mark");
  EXPECT_EQ(sheet_.CellPictureAlignment(3, sheet_.ColIndex("IssQty")), platform::PictureAlignment::kRightTop);
  EXPECT_EQ(
      Picture(1, "ProductName") + Picture(2, "ProductName") + Picture(3, "ProductName") + Picture(4, "ProductName"),
      "Mtr");
}

TEST_F(Rows, ShowDepotAndProjectOnlyWhereTheyAreNamed) {
  Put(1, "Depot", "总库");
  Put(1, "Project", "一号楼");
  Kinds().DecorateRow(1);
  Kinds().DecorateRow(2);
  EXPECT_EQ(Picture(1, "Depot") + Picture(1, "Project"), "DepotProject");
  EXPECT_EQ(Picture(2, "Depot") + Picture(2, "Project"), "");
}

TEST_F(Rows, CollapseAndExpandNodesAndNothingElse) {
  sheet_.SetIsSubtotal(1, true);
  sheet_.SetIsSubtotal(3, true);
  for (const int line : {2, 4}) sheet_.SetRowOutlineLevel(line, 1);
  sheet_.Select(2, 3);
  sheet_.CollapseAll();
  EXPECT_TRUE(sheet_.IsCollapsed(1) && sheet_.IsCollapsed(3));
  EXPECT_EQ(sheet_.Row(), 2);
  sheet_.ExpandAll();
  EXPECT_FALSE(sheet_.IsCollapsed(1) || sheet_.IsCollapsed(3));
}

TEST_F(Rows, ComposeAProductNameOfTheHiddenParts) {
  Put(1, "pdID", "7");
  sheet_.SetCellData(1, sheet_.ColIndex("ProductName"), base::Value(std::string("六角螺栓")));
  Put(1, "Model", "M8");
  Put(1, "Standard", "GB5783");
  Put(1, "Measure", "个");
  EXPECT_EQ(ComposeProductName(sheet_, 1), "六角螺栓 M8[GB5783](个)");
  sheet_.SetColHidden(sheet_.ColIndex("Standard"), false);
  EXPECT_EQ(ComposeProductName(sheet_, 1), "六角螺栓 M8(个)");
  for (const char* key : {"Model", "Measure"}) sheet_.SetColHidden(sheet_.ColIndex(key), false);
  EXPECT_EQ(ComposeProductName(sheet_, 1), "六角螺栓") << "no trailing blank";
}

TEST_F(Rows, AddNothingForAHiddenPartThatIsEmpty) {
  sheet_.SetCellData(1, sheet_.ColIndex("ProductName"), base::Value(std::string("六角螺栓")));
  Put(1, "Measure", "个");
  EXPECT_EQ(ComposeProductName(sheet_, 1), "六角螺栓 (个)");
}

TEST_F(Rows, KeepTheirTextWithoutAProduct) {
  const char* products[] = {"0", "", "-1", "7"};
  for (int row = 1; row <= 4; ++row) {
    Put(row, "ProductName", "old");
    Put(row, "pdID", products[row - 1]);
  }
  sheet_.SetTag("before");
  RefreshProductNames(sheet_, sheet_);
  EXPECT_EQ(Get(1, "ProductName") + Get(2, "ProductName") + Get(3, "ProductName") + Get(4, "ProductName"), "oldoldold");
  EXPECT_EQ(sheet_.Tag(), "before");
  EXPECT_TRUE(sheet_.Redraw());
}

columns::Column Texts(const std::vector<std::string>& texts) {
  columns::ColumnBuilder builder;
  for (const std::string& text : texts) builder.AppendText(text);
  return builder.Finish();
}

TEST_F(Rows, RefreshLoadedNamesAsTheSameRowsOneByOne) {
  std::vector<columns::Column> loaded;
  loaded.push_back(Texts({"螺栓", "螺栓", "垫圈", "垫圈"}));
  loaded.push_back(Texts({"M8", "M8", "", "D8"}));
  loaded.push_back(Texts({"GB1", "GB1", "GB2", ""}));
  loaded.push_back(Texts({"7", "7", "8", "0"}));
  sheet_.LoadColumns(std::move(loaded), 1);
  const char* keys[] = {"ProductName", "Model", "Standard", "pdID"};
  for (int at = 0; at < 4; ++at) sheet_.SetColKey(at + 1, keys[at]);
  ColumnLayout(sheet_, settings_, hidden_).FormatColumns("BillNo");
  sheet_.AddItem("", 1);
  sheet_.AddItem("", 4);
  Put(4, "pdID", "9");
  sheet_.SetCellData(4, sheet_.ColIndex("ProductName"), base::Value(std::string("螺母")));
  RefreshProductNames(sheet_, sheet_);
  EXPECT_EQ(Get(2, "ProductName"), "螺栓 M8[GB1]");
  EXPECT_EQ(Get(3, "ProductName"), "螺栓 M8[GB1]");
  EXPECT_EQ(Get(4, "ProductName"), "螺母");
  EXPECT_EQ(Get(5, "ProductName"), "垫圈 [GB2]");
  EXPECT_EQ(Get(6, "ProductName"), "垫圈") << "no product key";
  EXPECT_EQ(Get(1, "ProductName"), "");
  RefreshProductNames(sheet_, sheet_);
  EXPECT_EQ(Get(2, "ProductName"), "螺栓 M8[GB1]") << "composing starts from the bare name again";
}

// Only texts have codes by which names can be told apart.
TEST_F(Rows, RefreshLoadedNamesWhereAPartIsANumber) {
  columns::ColumnBuilder models;
  for (const double model : {8.0, 8.0, 6.0, 8.0}) models.AppendDouble(model);
  std::vector<columns::Column> loaded;
  loaded.push_back(Texts({"螺栓", "垫圈", "垫圈", "螺栓"}));
  loaded.push_back(models.Finish());
  loaded.push_back(Texts({"7", "8", "9", "0"}));
  sheet_.LoadColumns(std::move(loaded), 1);
  const char* keys[] = {"ProductName", "Model", "pdID"};
  for (int at = 0; at < 3; ++at) sheet_.SetColKey(at + 1, keys[at]);
  ColumnLayout(sheet_, settings_, hidden_).FormatColumns("BillNo");
  RefreshProductNames(sheet_, sheet_);
  EXPECT_EQ(Get(1, "ProductName"), "螺栓 8");
  EXPECT_EQ(Get(2, "ProductName"), "垫圈 8");
  EXPECT_EQ(Get(3, "ProductName"), "垫圈 6");
  EXPECT_EQ(Get(4, "ProductName"), "螺栓");
}

TEST_F(Rows, RefreshLoadedNamesWithTheirMeasures) {
  std::vector<columns::Column> loaded;
  loaded.push_back(Texts({"螺栓", "螺栓"}));
  loaded.push_back(Texts({"个", "盒"}));
  loaded.push_back(Texts({"7", "8"}));
  sheet_.LoadColumns(std::move(loaded), 1);
  const char* keys[] = {"ProductName", "Measure", "pdID"};
  for (int at = 0; at < 3; ++at) sheet_.SetColKey(at + 1, keys[at]);
  ColumnLayout(sheet_, settings_, hidden_).FormatColumns("BillNo");
  RefreshProductNames(sheet_, sheet_);
  EXPECT_EQ(Get(1, "ProductName"), "螺栓 (个)");
  EXPECT_EQ(Get(2, "ProductName"), "螺栓 (盒)");
  sheet_.SetColHidden(sheet_.ColIndex("Measure"), false);
  RefreshProductNames(sheet_, sheet_);
  EXPECT_EQ(Get(2, "ProductName"), "螺栓");
}

TEST_F(Rows, RefreshNamesFromTheCellsThatTheHostChanged) {
  std::vector<columns::Column> loaded;
  loaded.push_back(Texts({"螺栓", "螺栓", "垫圈", "垫圈"}));
  loaded.push_back(Texts({"M8", "M8", "D6", "D8"}));
  loaded.push_back(Texts({"7", "7", "8", "0"}));
  sheet_.LoadColumns(std::move(loaded), 1);
  const char* keys[] = {"ProductName", "Model", "pdID"};
  for (int at = 0; at < 3; ++at) sheet_.SetColKey(at + 1, keys[at]);
  ColumnLayout(sheet_, settings_, hidden_).FormatColumns("BillNo");
  EXPECT_FALSE(sheet_.HasEditedRecords(sheet_.ColIndex("Model")));
  Put(2, "Model", "M10");
  EXPECT_TRUE(sheet_.HasEditedRecords(sheet_.ColIndex("Model")));
  sheet_.SetCellData(3, sheet_.ColIndex("ProductName"), base::Value(std::string("弹簧垫圈")));
  RefreshProductNames(sheet_, sheet_);
  EXPECT_EQ(Get(1, "ProductName"), "螺栓 M8");
  EXPECT_EQ(Get(2, "ProductName"), "螺栓 M10");
  EXPECT_EQ(Get(3, "ProductName"), "弹簧垫圈 D6");
  EXPECT_EQ(Get(4, "ProductName"), "垫圈") << "no product key";
  Put(4, "pdID", "9");
  Put(1, "pdID", "0");
  Put(1, "ProductName", "heading");
  RefreshProductNames(sheet_, sheet_);
  EXPECT_EQ(Get(1, "ProductName"), "heading");
  EXPECT_EQ(Get(4, "ProductName"), "垫圈 D8");
}

TEST_F(Rows, GetTagAndRedrawBackWhenTheGridRefuses) {
  testing::FaultyGrid faulty(sheet_);
  Put(1, "pdID", "7");
  sheet_.SetTag("before");
  const std::function<void()> operations[] = {[&] { RefreshProductNames(faulty, faulty); },
                                              [&] { SetColumnsFont(faulty, faulty, "|Price|", "Arial"); }};
  for (const auto& operation : operations) {
    for (const int call : {3, 4}) {
      faulty.RefuseCall(call);
      EXPECT_THROW(operation(), platform::Error);
      faulty.RefuseCall(0);
      EXPECT_EQ(sheet_.Tag(), "before");
      EXPECT_TRUE(sheet_.Redraw());
    }
  }
}

TEST_F(Rows, DecorateLoadedRecordsAsTheSameRowsOneByOne) {
  const std::vector<std::string> names = {"入库单", "采购单", "出库单", "销售单", "调拨单", "", "其他", "购单"};
  std::vector<std::vector<std::string>> columns(7);
  for (size_t row = 0; row < 64; ++row) {
    columns[0].push_back(names[row % names.size()]);
    columns[1].push_back(row % 3 == 0 ? "王" : "");
    columns[2].push_back(row % 5 == 0 ? "7" : row % 5 == 1 ? "-1" : "0");
    columns[3].push_back(row % 4 == 0 ? "-9" : row % 4 == 1 ? "12" : "0");
    columns[4].push_back(row % 2 == 0 ? "总库" : "");
    columns[5].push_back(row % 7 != 0 ? "某某商行" : "");
    columns[6].push_back(row % 6 == 0 ? "一号楼" : "");
  }
  const char* keys[] = {"BillName", "Auditor", "pdID", "OtherID", "Depot", "Enterprise", "Project"};
  std::vector<columns::Column> loaded;
  for (const auto& column : columns) loaded.push_back(Texts(column));
  sheet_.LoadColumns(std::move(loaded), 1);
  for (int at = 0; at < 7; ++at) sheet_.SetColKey(at + 1, keys[at]);
  ColumnLayout(sheet_, settings_, hidden_).FormatColumns("BillNo");
  Kinds().DecorateRecords();
  sheet::GridSheet single;
  single.SetRows(1);
  single.SetFixedRows(1);
  single.SetCols(1);
  single.SetFixedCols(1);
  ColumnLayout(single, settings_, hidden_).FormatColumns("BillNo");
  single.SetRows(65);
  BillKinds kinds(single, pictures_, images_, MakePicture("mark"), "BillNo");
  for (int row = 1; row <= 64; ++row) {
    for (size_t at = 0; at < 7; ++at)
      single.SetTextMatrix(row, single.ColIndex(keys[at]), columns[at][static_cast<size_t>(row) - 1]);
    const int kind_column = single.ColIndex("BillKind");
    single.SetCellPicture({row, kind_column, row + 1, kind_column + 1}, kinds.BillKindPicture(row, single),
                          platform::PictureAlignment::kLeftCenter);
    kinds.DecorateRow(row);
  }
  for (int row = 1; row <= 64; ++row) {
    for (int column = 0; column < kColumnCount; ++column) {
      ASSERT_EQ(NameOf(sheet_.CellPicture(row, column)), NameOf(single.CellPicture(row, column)))
          << "row " << row << " " << single.ColKey(column);
    }
  }
}

TEST_F(Rows, TakeTheirHeightsFromTheFont) {
  FakeTextMetrics metrics;
  testing::FakeRows rows(5);
  RowSizes sizes = SizeRows(rows, metrics, {});
  EXPECT_EQ(sizes.data, 270);
  EXPECT_EQ(sizes.sum, 540);
  EXPECT_EQ(sizes.title, 480);
  EXPECT_EQ(rows.RowHeight(1), 270);
  EXPECT_EQ(rows.RowHeight(0), 480);
  metrics.line_height_twips = 300;
  sizes = SizeRows(rows, metrics, {});
  EXPECT_EQ(sizes.data, 360) << "the text height plus 60 twips at 15 twips a pixel";
  EXPECT_EQ(sizes.sum, 720);
  EXPECT_EQ(sizes.title, 660);
}

TEST_F(Rows, GiveTheirHeightsBackAsTheGridShowsThem) {
  testing::FakeRows rows(5);
  rows.SetRowHeight(-1, 300);
  rows.SetRowHeight(0, 500);
  EXPECT_EQ(ReadRowSizes(rows).sum, 300);
  rows.rows[2].node = true;
  SetSumRowHeight(rows, 650);
  EXPECT_EQ(rows.RowHeight(2), 650);
  EXPECT_EQ(rows.RowHeight(3), 300);
  const RowSizes sizes = ReadRowSizes(rows);
  EXPECT_EQ(sizes.title, 500);
  EXPECT_EQ(sizes.data, 300);
  EXPECT_EQ(sizes.sum, 650);
}

TEST_F(Rows, GetAFontInTheirExistingCellsOnly) {
  SetColumnsFont(sheet_, sheet_, "|Price|Unknown|SeqNo|Quantity|", "");
  EXPECT_EQ(sheet_.CellFontName(1, sheet_.ColIndex("Price")), "Arial");
  EXPECT_EQ(sheet_.CellFontName(4, sheet_.ColIndex("Quantity")), "Arial");
  EXPECT_NE(sheet_.CellFontName(0, sheet_.ColIndex("Price")), "Arial");
  EXPECT_NE(sheet_.CellFontName(1, sheet_.ColIndex("SeqNo")), "Arial") << "a fixed column keeps its font";
  EXPECT_NE(sheet_.CellFontName(1, sheet_.ColIndex("BillNo")), "Arial");
}

class EmptyRows : public Rows {
 protected:
  EmptyRows() : Rows(0) {}
};

TEST_F(EmptyRows, KeepNoFontForRowsThatComeLater) {
  SetColumnsFont(sheet_, sheet_, "|Price|", "Arial");
  sheet_.SetRows(3);
  EXPECT_NE(sheet_.CellFontName(1, sheet_.ColIndex("Price")), "Arial");
}

TEST_F(EmptyRows, HaveNoBillsToCount) { EXPECT_EQ(Statistics(sheet_), "未找到输入单据"); }

TEST_F(Rows, AreCountedByExactBillNameAndPositiveBillId) {
  const char* names[] = {"入库单", "入库单", "出库单", "入库单"};
  const char* ids[] = {"5", "5", "6", "0"};
  for (int row = 1; row <= 4; ++row) {
    Put(row, "BillName", names[row - 1]);
    Put(row, "BillID", ids[row - 1]);
  }
  EXPECT_EQ(Statistics(sheet_), "单据共：3 张\r\n  其中:\r\n    入库单:2张\r\n    出库单:1张\r\n    调拨单:0张");
  for (int row = 1; row <= 4; ++row) Put(row, "BillName", row % 2 == 0 ? "采购单" : "入库单 ");
  EXPECT_EQ(Statistics(sheet_), "未找到输入单据");
}

}  // namespace
}  // namespace stockbook::grid
