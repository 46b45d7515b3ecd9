// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "stockbook/base/value.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/interaction/event_listener.h"
#include "stockbook/platform/error.h"
#include "stockbook/platform/grid_appearance.h"
#include "stockbook/platform/grid_outline.h"
#include "support/fake_surroundings.h"
#include "support/faulty_grid.h"
#include "support/journal_rows.h"

namespace stockbook::control {
namespace {

using testing::ControlOverFakes;
using testing::FakeConnection;

TEST(Control, StartsWithItsInitialState) {
  ControlOverFakes fakes;
  const Stockbook& control = *fakes.control;
  EXPECT_EQ(control.MaterielTitle() + control.SupplierTitle() + control.CustomerTitle() + control.ProjectTitle(),
            "商品发货单位收货单位项目");
  EXPECT_EQ(control.Field00() + control.Field01() + control.Field02() + control.Field03() + control.Field04() +
                control.Field05() + control.Field06(),
            "经手人交接人包装货位期限序列号生产日期");
  EXPECT_EQ(control.Field16(), "生产日期");
  EXPECT_EQ(control.PriceFormat() + control.QuantityFormat() + control.AccountFormat(), "#,##0.00#,##0.00#,##0.00");
  EXPECT_EQ(control.RowHeight(), 250);
  EXPECT_EQ(control.RowHeightTitle(), 400);
  EXPECT_EQ(control.BackColorHot(), 0xE2D2C7U);
  EXPECT_EQ(control.ForeColorHot(), fakes.fg.ColourOf(platform::GridColour::kForeColor));
  EXPECT_FALSE(control.AllowView() || control.AllowPrint() || control.AllowQty2() || control.AllowInv());
  EXPECT_EQ(control.JournalType(), base::MaterialJournal);
  EXPECT_EQ(control.OutlineColKey(), "BillNo");
  EXPECT_EQ(fakes.fg.Cols(), 56);
  EXPECT_EQ(fakes.fg.FixedRows(), 1);
  EXPECT_EQ(fakes.fg.FixedCols(), 1);
  EXPECT_EQ(testing::NameOf(control.C1EHeader().picture), "StkBk");
}

TEST(Control, ReadsTheCaptionBackTrimmedAndShowsItWithThreeBlanks) {
  ControlOverFakes fakes;
  fakes.control->SetCaption("  库存 台账 ");
  EXPECT_EQ(fakes.control->Caption(), "库存 台账");
  EXPECT_EQ(fakes.control->C1EHeader().caption, "库存 台账   ");
}

TEST(Control, RefusesADepotBeyondSixteenBitsAndKeepsTheOldOne) {
  ControlOverFakes fakes;
  fakes.control->SetdpID(12);
  EXPECT_THROW(fakes.control->SetdpID(40000), platform::Error);
  EXPECT_THROW(fakes.control->SetdpID(-32769), platform::Error);
  EXPECT_EQ(fakes.control->dpID(), 12);
  fakes.control->SetdpID(-32768);
  EXPECT_EQ(fakes.control->dpID(), -32768);
}

TEST(Control, NamesTheFormatOfTheFourTypesOnly) {
  ControlOverFakes fakes;
  EXPECT_EQ(fakes.control->FmtName(), "Stockbook");
  fakes.control->SetJournalType(static_cast<tqJournalTypeContants>(8));
  EXPECT_EQ(fakes.control->FmtName(), "");
}

TEST(Control, ShowsTheIconOfTheJournalTypeAndLaysOutAnew) {
  ControlOverFakes fakes;
  fakes.control->SetJournalType(base::CustomerJournal);
  EXPECT_EQ(testing::NameOf(fakes.control->C1EHeader().picture), "CustJnl");
  EXPECT_EQ(fakes.control->FmtName(), "CustomerJournal");
  EXPECT_EQ(fakes.fg.TextMatrix(0, fakes.fg.ColIndex("StoQty")), "累计数量");
  fakes.control->SetJournalType(base::SupplierJournal);
  EXPECT_EQ(testing::NameOf(fakes.control->C1EHeader().picture), "SuppJnl");
  fakes.control->SetJournalType(base::ProjectJournal);
  EXPECT_EQ(testing::NameOf(fakes.control->C1EHeader().picture), "ProjJnl");
}

TEST(Control, CallsItAReceiptWithoutACurrentDataRow) {
  ControlOverFakes fakes;
  EXPECT_EQ(fakes.control->Flag(-1), 0);
  EXPECT_EQ(fakes.control->FlagName(), "入库");
  EXPECT_EQ(fakes.control->BillID(99), 0);
  EXPECT_EQ(fakes.control->BillName(99), "");
}

TEST(Control, ReadsRestrictionsAsTruthValuesOrNumbersOnly) {
  ControlOverFakes fakes;
  for (const char* text : {"True", "FALSE", "0", "-1", "0.5"}) {
    fakes.control->SetAccRestrict(text);
    EXPECT_EQ(fakes.control->AccRestrict(), text);
  }
  for (const char* text : {"", "yes", "truee", "1x"})
    EXPECT_THROW(fakes.control->SetAccRestrict(text), platform::Error) << text;
  EXPECT_EQ(fakes.control->AccRestrict(), "0.5");
}

TEST(Control, TakesSecondQuantityKeysOffTheListAndPutsThemBack) {
  ControlOverFakes fakes;
  Stockbook& control = *fakes.control;
  control.SetAllowQty2(true);
  EXPECT_EQ(control.ColsFilter().find("Qty2|"), std::string::npos);
  EXPECT_TRUE(fakes.fg.ColHidden(fakes.fg.ColIndex("StoQty2"))) << "showing waits for the next layout";
  control.DefaultFormat();
  EXPECT_FALSE(fakes.fg.ColHidden(fakes.fg.ColIndex("StoQty2")));
  control.SetAllowQty2(false);
  EXPECT_TRUE(control.ColsFilter().ends_with("|Quantity2|Qty2|RevQty2|IssQty2|StoQty2|"));
  EXPECT_TRUE(fakes.fg.ColHidden(fakes.fg.ColIndex("StoQty2")));
}

TEST(Control, HidesTheTaxColumnsAtOnce) {
  ControlOverFakes fakes;
  fakes.control->SetAllowInv(true);
  EXPECT_EQ(fakes.control->ColsFilter().find("|Tax|"), std::string::npos);
  fakes.control->DefaultFormat();
  EXPECT_FALSE(fakes.fg.ColHidden(fakes.fg.ColIndex("Tax")));
  fakes.control->SetAllowInv(false);
  for (const char* key : {"Ratio", "Tax", "TaxPrice", "TaxAccount"})
    EXPECT_TRUE(fakes.fg.ColHidden(fakes.fg.ColIndex(key)));
}

TEST(Control, ReadsTheNewestPeriodFromTheConnection) {
  ControlOverFakes fakes;
  EXPECT_EQ(fakes.control->AccPeriod(), "");
  auto connection = std::make_shared<FakeConnection>();
  connection->Answer("Select Top 1 * From tqAccPeriod Order by AccPeriod DESC", {"AccPeriod"},
                     {{testing::Text("2004-06")}});
  fakes.control->SetConn(connection);
  EXPECT_EQ(fakes.control->AccPeriod(), "2004-06");
  EXPECT_EQ(fakes.control->Conn(), connection);
}

class LoadedControl : public ::testing::Test {
 protected:
  LoadedControl() {
    auto connection = std::make_shared<FakeConnection>();
    std::vector<testing::JournalLine> lines(200);
    for (size_t at = 0; at < lines.size(); ++at) {
      lines[at].bill_id = static_cast<int64_t>(at) + 1000;
      lines[at].flag = static_cast<int64_t>(at % 2);
      lines[at].bill_name = at % 2 == 0 ? "入库单" : "出库单";
    }
    testing::AnswerJournal(*connection, lines);
    fakes_.control->SetConn(connection);
    fakes_.control->Load(7, 0);
    fakes_.fg.view().SetSize({800, 300}, 1.0);
  }
  ControlOverFakes fakes_;
};

TEST_F(LoadedControl, ReadsBillIdNameAndFlagOfARowOrTheCurrentOne) {
  fakes_.control->SetRow(4);
  EXPECT_EQ(fakes_.control->BillID(), 1001);
  EXPECT_EQ(fakes_.control->BillID(-5), 1001);
  EXPECT_EQ(fakes_.control->BillName(3), "入库单");
  for (const int32_t row : {-1, -5}) EXPECT_EQ(fakes_.control->BillName(row), "出库单") << row;
  EXPECT_EQ(fakes_.control->Flag(), 1);
  EXPECT_EQ(fakes_.control->FlagName(), "出库");
}

TEST_F(LoadedControl, LeavesTheRowForFixedRowsAndTheRowCount) {
  fakes_.control->SetRow(5);
  fakes_.control->SetRow(0);
  EXPECT_EQ(fakes_.control->Row(), 5);
  fakes_.control->SetRow(fakes_.control->Rows());
  EXPECT_EQ(fakes_.control->Row(), 5);
  fakes_.control->SetRow(-1);
  EXPECT_EQ(fakes_.control->Row(), 5);
}

TEST_F(LoadedControl, BringsAHiddenOrDistantRowIntoView) {
  fakes_.fg.SetRowHidden(150, true);
  fakes_.control->SetRow(150);
  EXPECT_FALSE(fakes_.fg.RowHidden(150));
  EXPECT_TRUE(fakes_.fg.RowIsVisible(150));
  EXPECT_EQ(fakes_.fg.BottomRow(), 150) << "coming from above it becomes the last row in view";
  fakes_.control->SetRow(20);
  EXPECT_EQ(fakes_.fg.TopRow(), 20) << "coming from below it becomes the first";
}

TEST_F(LoadedControl, CountsFixedRowsAmongItsRows) {
  EXPECT_EQ(fakes_.control->Rows(), 1 + 1 + 1 + 200 + 1) << "captions, opening, node, lines, total";
  EXPECT_EQ(fakes_.control->Rows(), fakes_.fg.Rows());
}

TEST(Control, BringsARowAfterManyFoldedOnesIntoViewInFewSteps) {
  ControlOverFakes fakes;
  testing::FaultyGrid counting(fakes.fg);
  Stockbook control({counting, fakes.fg1, fakes.metrics, fakes.images, fakes.menu, fakes.clipboard, fakes.site});
  constexpr int kLines = 300000;
  columns::ColumnBuilder lines;
  for (int line = 0; line < 2 * kLines; ++line) lines.AppendText(line < kLines ? "a" : "b");
  std::vector<columns::Column> columns;
  columns.push_back(lines.Finish());
  fakes.fg.LoadColumns(std::move(columns), 1);
  fakes.fg.GroupBy(1, 3, "%s");
  fakes.fg.view().SetSize({800, 300}, 1.0);
  fakes.fg.SetIsCollapsed(1, true);
  const int row = 2 + kLines + 60;
  counting.RefuseCall(200);
  control.SetRow(row);
  counting.RefuseCall(0);
  EXPECT_EQ(fakes.fg.Row(), row);
  EXPECT_EQ(fakes.fg.BottomRow(), row);
  control.SetRow(kLines / 2);
  EXPECT_FALSE(fakes.fg.IsCollapsed(1)) << "a folded row is unfolded";
  EXPECT_TRUE(fakes.fg.RowIsVisible(kLines / 2));
}

TEST(Control, HidesTheFieldsOfItsFilterWithTheNextLayout) {
  ControlOverFakes fakes;
  fakes.control->SetFieldsFilter("Price|ProductName|");
  EXPECT_EQ(fakes.control->FieldsFilter(), "Price|ProductName|");
  EXPECT_FALSE(fakes.fg.ColHidden(fakes.fg.ColIndex("Price")));
  fakes.control->DefaultFormat();
  EXPECT_TRUE(fakes.fg.ColHidden(fakes.fg.ColIndex("Price")));
  EXPECT_NE(fakes.control->ColsFilter().find("|Measure|Price|ProductName|Quantity2|"), std::string::npos);
  fakes.control->SetFieldsFilter("Price");
  fakes.control->DefaultFormat();
  EXPECT_FALSE(fakes.fg.ColHidden(fakes.fg.ColIndex("Price"))) << "a key without bars never matches";
}

TEST(Control, TakesFormatsTitlesAndCaptionsWithTheNextLayout) {
  ControlOverFakes fakes;
  Stockbook& control = *fakes.control;
  control.SetPriceFormat("0.0000");
  control.SetQuantityFormat("0.000");
  control.SetAccountFormat("0.00");
  control.SetMaterielTitle("货物");
  control.SetProjectTitle("工程");
  control.SetField16("制造日期");
  const auto format = [&](const char* key) { return fakes.fg.ColFormat(fakes.fg.ColIndex(key)); };
  const auto caption = [&](const char* key) { return fakes.fg.TextMatrix(0, fakes.fg.ColIndex(key)); };
  EXPECT_EQ(format("Price") + format("StoQty") + format("StoAcc"), "#,##0.00#,##0.00#,##0.00");
  control.DefaultFormat();
  EXPECT_EQ(format("Price") + " " + format("StoQty") + " " + format("StoAcc"), "0.0000 0.000 0.00");
  EXPECT_EQ(caption("ProductNo") + caption("ProjNo"), "货物编号工程编号");
  EXPECT_EQ(caption("Field6"), "生产日期\n制造日期");
}

TEST(Control, KeepsItsPlainFlags) {
  ControlOverFakes fakes;
  fakes.control->SetAllowView(true);
  EXPECT_TRUE(fakes.control->AllowView());
  EXPECT_FALSE(fakes.control->AllowPrint());
  fakes.control->SetAllowPrint(true);
  EXPECT_TRUE(fakes.control->AllowPrint());
}

TEST(Control, PutsTheNumericColumnsIntoAnotherFontOnCommand) {
  ControlOverFakes fakes;
  fakes.fg.SetRows(2);
  std::vector<base::Value> none;
  EXPECT_TRUE(fakes.control->DoCommand("SetColFont", none).IsNull());
  for (const char* key :
       {"Price", "Quantity", "Quantity2", "Account", "RevQty", "RevQty2", "RevAcc", "IssQty", "IssQty2", "IssAcc",
        "StoPrice", "StoQty", "StoQty2", "StoAcc", "Ratio", "Tax", "TaxPrice", "TaxAccount"}) {
    EXPECT_EQ(fakes.fg.CellFontName(1, fakes.fg.ColIndex(key)), "Arial") << key;
    EXPECT_NE(fakes.fg.CellFontName(0, fakes.fg.ColIndex(key)), "Arial") << key;
  }
  for (const char* key : {"BillNo", "DQty", "DStoQty", "OtherID"}) {
    EXPECT_NE(fakes.fg.CellFontName(1, fakes.fg.ColIndex(key)), "Arial") << key;
  }
}

TEST_F(LoadedControl, KnowsARangeByEitherCoordinate) {
  fakes_.fg.Select(5, 4);
  EXPECT_FALSE(fakes_.control->IsRangeSelected());
  fakes_.fg.SelectRange(5, 4, 5, 6);
  EXPECT_TRUE(fakes_.control->IsRangeSelected());
  fakes_.fg.SelectRange(5, 4, 8, 4);
  EXPECT_TRUE(fakes_.control->IsRangeSelected());
}

TEST_F(LoadedControl, SetsHeightsOfAllRowsTheTitleAndTheNodes) {
  fakes_.control->SetRowHeightTitle(600);
  fakes_.control->SetRowHeightSum(700);
  fakes_.control->SetRowHeight(330);
  EXPECT_EQ(fakes_.fg.RowHeight(0), 600);
  EXPECT_EQ(fakes_.fg.RowHeight(2), 700);
  EXPECT_EQ(fakes_.fg.RowHeight(3), 330);
  EXPECT_EQ(fakes_.fg.RowHeight(fakes_.fg.Rows() - 1), 700);
}

TEST_F(LoadedControl, CountsBillRowsInItsStatistics) {
  EXPECT_EQ(fakes_.control->Statistics(),
            "单据共：200 张\r\n  其中:\r\n    入库单:100张\r\n    出库单:100张\r\n    调拨单:0张");
}

TEST(Control, TellsTheSiteOfEveryChangedAppearanceProperty) {
  ControlOverFakes fakes;
  Stockbook& control = *fakes.control;
  control.SetBackColor(0x112233);
  control.SetOutlinebar(platform::OutlineBarStyle::kSymbols);
  control.SetBorderWidth(0);
  control.SetIssPicture(testing::MakePicture("iss"));
  control.SetSheetBorderColor(0x445566);
  EXPECT_EQ(fakes.site.changed,
            (std::vector<std::string>{"BackColor", "OutlineBar", "BorderWidth", "IssPicture", "SheetBorderColor"}));
  EXPECT_EQ(control.BackColor(), 0x112233U);
  EXPECT_EQ(fakes.fg.ColourOf(platform::GridColour::kBackColor), 0x112233U);
  EXPECT_EQ(control.C1EBody().border_width, 1);
  control.SetBorderWidth(2);
  EXPECT_EQ(control.C1EBody().border_width, 0);
  EXPECT_EQ(testing::NameOf(control.IssPicture()), "iss");
}

TEST(Control, HandsNodePicturesToTheGrid) {
  ControlOverFakes fakes;
  fakes.control->SetNodeOpenPicture(testing::MakePicture("open"));
  fakes.control->SetNodeClosedPicture(testing::MakePicture("closed"));
  EXPECT_EQ(testing::NameOf(fakes.fg.NodeOpenPicture()), "open");
  EXPECT_EQ(testing::NameOf(fakes.fg.NodeClosedPicture()), "closed");
}

TEST(Control, RewritesProductNamesForAnyPieceOfTheNameColumns) {
  ControlOverFakes fakes;
  fakes.fg.SetRows(2);
  fakes.fg.SetTextMatrix(1, fakes.fg.ColIndex("pdID"), "7");
  fakes.fg.SetCellData(1, fakes.fg.ColIndex("ProductName"), base::Value(std::string("螺栓")));
  fakes.fg.SetTextMatrix(1, fakes.fg.ColIndex("Model"), "M8");
  const auto name_after = [&](const char* command, const char* key) {
    fakes.fg.SetTextMatrix(1, fakes.fg.ColIndex("ProductName"), "old");
    std::vector<base::Value> parameters = {base::Value(std::string(key))};
    EXPECT_TRUE(fakes.control->DoCommand(command, parameters).IsNull());
    return fakes.fg.TextMatrix(1, fakes.fg.ColIndex("ProductName"));
  };
  EXPECT_EQ(name_after("ColChanged", "Standard"), "螺栓 M8");
  EXPECT_EQ(name_after("ColChanged", "del"), "螺栓 M8");
  EXPECT_EQ(name_after("ColChanged", ""), "螺栓 M8");
  EXPECT_EQ(name_after("ColChanged", "standard"), "old");
  EXPECT_EQ(name_after("ColChanged", "Price"), "old");
  EXPECT_EQ(name_after("colchanged", "Model"), "old");
  std::vector<base::Value> none;
  EXPECT_THROW(fakes.control->DoCommand("ColChanged", none), std::out_of_range);
}

TEST(Control, SendsAnEmptyPromptToo) {
  struct Ear : interaction::EventListener {
    void Notify(const std::string& message) override { heard.push_back(message); }
    std::vector<std::string> heard;
  } ear;
  ControlOverFakes fakes;
  fakes.control->AddListener(&ear);
  fakes.control->Prompt("");
  EXPECT_EQ(ear.heard, (std::vector<std::string>{""}));
}

}  // namespace
}  // namespace stockbook::control
