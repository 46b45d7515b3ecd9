// SPDX-License-Identifier: MIT
#include "grid/column_layout.h"

#include <gtest/gtest.h>

#include "grid/field_captions.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::grid {
namespace {

struct Laid {
  Laid() {
    sheet.SetRows(1);
    sheet.SetFixedRows(1);
    sheet.SetCols(1);
    sheet.SetFixedCols(1);
  }
  void Format() { ColumnLayout(sheet, settings, hidden).FormatColumns("BillNo"); }
  std::string Caption(const char* key) { return sheet.TextMatrix(0, sheet.ColIndex(key)); }
  bool Hidden(const char* key) { return sheet.ColHidden(sheet.ColIndex(key)); }

  sheet::GridSheet sheet;
  LayoutSettings settings;
  HiddenKeys hidden;
};

constexpr const char* kKeysInOrder[] = {
    "SeqNo",   "Period",   "BillDate",  "BillNo",   "BillKind",  "Explain",    "ProductName", "ProductNo",
    "Model",   "Standard", "Measure",   "Measure2", "Price",     "Quantity",   "Quantity2",   "Account",
    "RevQty",  "RevQty2",  "RevAcc",    "IssQty",   "IssQty2",   "IssAcc",     "StoPrice",    "StoQty",
    "StoQty2", "StoAcc",   "Ratio",     "Tax",      "TaxPrice",  "TaxAccount", "Field0",      "Field1",
    "Field2",  "Field3",   "Field4",    "Field5",   "Field6",    "Depot",      "Enterprise",  "Project",
    "ProjNo",  "Inputor",  "InputDate", "Auditor",  "AuditDate", "DQty",       "DStoQty",     "BillID",
    "RecID",   "dpID",     "ksID",      "pjID",     "OtherID",   "pdID",       "Flag",        "BillName"};

TEST(ColumnLayout, MakesTheFiftySixColumnsInTheirOrder) {
  Laid laid;
  laid.Format();
  ASSERT_EQ(laid.sheet.Cols(), kColumnCount);
  for (int column = 0; column < kColumnCount; ++column) EXPECT_EQ(laid.sheet.ColKey(column), kKeysInOrder[column]);
  EXPECT_EQ(laid.sheet.OutlineCol(), 3);
}

TEST(ColumnLayout, GivesEveryColumnItsCaptionTypeFormatWidthAndAlignment) {
  Laid laid;
  laid.settings.price_format = "0.000";
  laid.settings.quantity_format = "0.0";
  laid.settings.account_format = "0";
  laid.Format();
  struct Expected {
    const char* key;
    const char* caption;
    int type;
    const char* format;
    int width;
    int alignment;
  };
  constexpr Expected kExpected[] = {
      {"SeqNo", "", 3, "", 200, 4},
      {"Period", "Period", 8, "", 900, 1},
      {"BillDate", "Period", 8, "", 900, 1},
      {"BillNo", "单据", 8, "", 2800, 1},
      {"BillKind", "类型", 8, "", 600, 1},
      {"Explain", "摘要", 8, "", 1000, 1},
      {"ProductName", "商品名称", 8, "", 1200, 1},
      {"ProductNo", "商品编号", 8, "", 1000, 1},
      {"Model", "规格", 8, "", 600, 1},
      {"Standard", "型号", 8, "", 600, 1},
      {"Measure", "单位", 8, "", 500, 4},
      {"Measure2", "单位2", 8, "", 500, 4},
      {"Price", "单价", 5, "0.000", 1200, 7},
      {"Quantity", "入库/出库\n数量", 5, "0.0", 1400, 7},
      {"Quantity2", "入库/出库\n数量2", 5, "", 1400, 7},
      {"Account", "入库/出库\n金额", 6, "0", 1400, 7},
      {"RevQty", "入库数量", 5, "0.0", 1400, 7},
      {"RevQty2", "入库数量2", 5, "", 1400, 7},
      {"RevAcc", "入库金额", 6, "0", 1400, 7},
      {"IssQty", "出库数量", 5, "0.0", 1400, 7},
      {"IssQty2", "出库数量2", 5, "", 1400, 7},
      {"IssAcc", "出库金额", 6, "0", 1400, 7},
      {"StoPrice", "库存单价", 5, "0.000", 1200, 7},
      {"StoQty", "库存数量", 5, "0.0", 1400, 7},
      {"StoQty2", "库存数量2", 5, "", 1400, 7},
      {"StoAcc", "库存金额", 6, "0", 1400, 7},
      {"Ratio", "税率", 5, "#0.00%", 900, 7},
      {"Tax", "税额", 5, "0", 1000, 7},
      {"TaxPrice", "含税单价", 5, "0.000", 1200, 7},
      {"TaxAccount", "含税金额", 5, "0", 1400, 7},
      {"Field0", "经手人", 8, "", 1400, 1},
      {"Field1", "交接人", 8, "", 1400, 1},
      {"Field2", "包装", 8, "", 1400, 1},
      {"Field3", "货位", 8, "", 1400, 1},
      {"Field4", "期限", 8, "", 1400, 1},
      {"Field5", "序列号", 8, "", 1400, 1},
      {"Field6", "生产日期", 8, "yyyy-MM-dd", 1400, 1},
      {"Depot", "仓库名称", 8, "", 1400, 1},
      {"Enterprise", "单位名称", 8, "", 1400, 1},
      {"Project", "项目名称", 8, "", 1400, 1},
      {"ProjNo", "项目编号", 8, "", 1400, 1},
      {"Inputor", "录入员", 8, "", 1400, 1},
      {"InputDate", "录入日期", 7, "yyyy-MM-dd", 1400, 1},
      {"Auditor", "审核员", 8, "", 1400, 1},
      {"AuditDate", "审核日期", 7, "yyyy-MM-dd", 1400, 1},
      {"DQty", "D库存数量", 5, "0.0", 1400, 7},
      {"DStoQty", "D库存数量", 5, "0.0", 1400, 7},
      {"BillID", "BillID", 3, "", 400, 7},
      {"RecID", "RecID", 3, "", 400, 7},
      {"dpID", "dpID", 3, "", 400, 7},
      {"ksID", "ksID", 3, "", 400, 7},
      {"pjID", "pjID", 3, "", 400, 7},
      {"OtherID", "OtherID", 3, "", 400, 7},
      {"pdID", "pdID", 3, "", 400, 7},
      {"Flag", "Flag", 3, "", 400, 7},
      {"BillName", "单据名称", 8, "", 400, 7},
  };
  ASSERT_EQ(std::size(kExpected), static_cast<size_t>(kColumnCount));
  for (const Expected& expected : kExpected) {
    const int column = laid.sheet.ColIndex(expected.key);
    EXPECT_EQ(laid.Caption(expected.key), expected.caption) << expected.key;
    EXPECT_EQ(static_cast<int>(laid.sheet.ColDataType(column)), expected.type) << expected.key;
    EXPECT_EQ(laid.sheet.ColFormat(column), expected.format) << expected.key;
    EXPECT_EQ(laid.sheet.ColWidth(column), expected.width) << expected.key;
    EXPECT_EQ(static_cast<int>(laid.sheet.ColAlignment(column)), expected.alignment) << expected.key;
  }
}

std::string Shown(Laid& laid) {
  laid.Format();
  std::string shown;
  for (int column = 0; column < laid.sheet.Cols(); ++column) {
    if (!laid.sheet.ColHidden(column)) shown += laid.sheet.ColKey(column) + " ";
  }
  return shown;
}

TEST(ColumnLayout, ShowsTheCombinedColumnsOfStockAndTheSplitOnesOfPartners) {
  Laid laid;
  const std::string stock = "SeqNo BillNo BillKind Explain Price Quantity Account StoPrice StoQty StoAcc ";
  EXPECT_EQ(Shown(laid), stock);
  laid.settings.journal_type = base::ProjectJournal;
  EXPECT_EQ(Shown(laid), stock);
  laid.settings.journal_type = base::SupplierJournal;
  EXPECT_EQ(Shown(laid), "SeqNo BillNo BillKind Explain ProductName Price RevQty RevAcc StoPrice StoQty StoAcc ");
  EXPECT_TRUE(laid.hidden.IsHiddenKey("Quantity") && laid.hidden.IsHiddenKey("IssAcc") &&
              !laid.hidden.IsHiddenKey("RevQty"));
  laid.settings.journal_type = base::CustomerJournal;
  EXPECT_EQ(Shown(laid), "SeqNo BillNo BillKind Explain ProductName Price IssQty IssAcc StoPrice StoQty StoAcc ");
  EXPECT_TRUE(laid.hidden.IsHiddenKey("RevAcc") && !laid.hidden.IsHiddenKey("IssQty"));
}

TEST(ColumnLayout, ShowsSecondQuantitiesAndTaxWhenAllowed) {
  Laid laid;
  laid.settings.allow_qty2 = true;
  laid.settings.allow_inv = true;
  EXPECT_EQ(Shown(laid),
            "SeqNo BillNo BillKind Explain Price Quantity Quantity2 Account StoPrice StoQty StoQty2 StoAcc Ratio Tax "
            "TaxPrice "
            "TaxAccount ");
  laid.settings.journal_type = base::SupplierJournal;
  EXPECT_EQ(Shown(laid),
            "SeqNo BillNo BillKind Explain ProductName Price RevQty RevQty2 RevAcc StoPrice StoQty StoQty2 StoAcc "
            "Ratio Tax TaxPrice "
            "TaxAccount ");
  laid.settings.journal_type = base::CustomerJournal;
  EXPECT_NE(Shown(laid).find("IssQty IssQty2 IssAcc"), std::string::npos);
}

TEST(ColumnLayout, CaptionsTheStockColumnsOfPartnersAsCumulative) {
  Laid laid;
  laid.settings.journal_type = base::CustomerJournal;
  laid.Format();
  EXPECT_EQ(laid.Caption("StoPrice"), "累计均价");
  EXPECT_EQ(laid.Caption("StoQty"), "累计数量");
  EXPECT_EQ(laid.Caption("StoQty2"), "累计数量2");
  EXPECT_EQ(laid.Caption("StoAcc"), "累计金额");
}

TEST(ColumnLayout, BuildsTheHiddenKeyListFromScratch) {
  Laid laid;
  laid.hidden.Assign("|left over|");
  laid.Format();
  EXPECT_EQ(laid.hidden.Text(),
            "|Period|BillDate|RecID|BillID|dpID|ksID|pjID|pdID|OtherID|Flag|DQty|DStoQty|BillName|Measure2|Ratio|Tax|"
            "TaxPrice|TaxAccount|"
            "ProductName|ProductNo|Model|Standard|Measure|Quantity2|RevQty2|IssQty2|StoQty2|");
  laid.settings.allow_inv = laid.settings.allow_qty2 = true;
  laid.settings.journal_type = base::SupplierJournal;
  laid.settings.fields_filter = "Explain|";
  laid.Format();
  EXPECT_EQ(laid.hidden.Text(),
            "|Period|BillDate|RecID|BillID|dpID|ksID|pjID|pdID|OtherID|Flag|DQty|DStoQty|BillName|Measure2|Quantity|"
            "Quantity2|Account|"
            "IssQty|IssAcc|Explain|");
  laid.settings.journal_type = static_cast<base::tqJournalTypeContants>(9);
  laid.settings.fields_filter = "no bars";
  laid.Format();
  EXPECT_TRUE(laid.hidden.Text().ends_with("|Measure2|no bars"));
  EXPECT_FALSE(laid.hidden.IsHiddenKey("no bars"));
}

TEST(ColumnLayout, DropsLeftoverColumnsAndBringsMovedOnesBack) {
  Laid laid;
  laid.Format();
  laid.sheet.SetCols(60);
  laid.sheet.SetColKey(58, "Extra");
  laid.sheet.SetColPosition(3, 20);
  laid.sheet.SetColWidth(20, 99);
  laid.sheet.SetTextMatrix(0, 20, "changed");
  laid.Format();
  EXPECT_EQ(laid.sheet.Cols(), kColumnCount);
  EXPECT_EQ(laid.sheet.ColIndex("Extra"), -1);
  for (int column = 0; column < kColumnCount; ++column) EXPECT_EQ(laid.sheet.ColKey(column), kKeysInOrder[column]);
  EXPECT_EQ(laid.sheet.ColWidth(3), 2800);
  EXPECT_EQ(laid.Caption("BillNo"), "单据");
}

TEST(ColumnLayout, IsTheSameWhenRunTwice) {
  Laid laid;
  laid.Format();
  const auto state = [&] {
    std::string text;
    for (int column = 0; column < laid.sheet.Cols(); ++column) {
      text += laid.sheet.ColKey(column) + laid.sheet.TextMatrix(0, column) +
              std::to_string(laid.sheet.ColWidth(column)) + ",";
    }
    return text + laid.hidden.Text();
  };
  const std::string once = state();
  laid.Format();
  EXPECT_EQ(state(), once);
}

TEST(ColumnLayout, MakesALineOfEveryBarInACaption) {
  Laid laid;
  ColumnLayout(laid.sheet, laid.settings, laid.hidden)
      .AddColumn(1, {"X", "a|b|c|", "", false, platform::DataType::kString, platform::Alignment::kLeftCenter, 99.9F});
  EXPECT_EQ(laid.Caption("X"), "a\nb\nc\n");
  EXPECT_EQ(laid.sheet.ColWidth(1), 99);
}

TEST(HiddenKeys, KnowWholeKeysOnly) {
  HiddenKeys keys;
  keys.Assign("|RevQty|Tax|");
  EXPECT_TRUE(keys.IsHiddenKey("RevQty"));
  EXPECT_FALSE(keys.IsHiddenKey("Qty"));
  EXPECT_FALSE(keys.IsHiddenKey("revqty"));
  keys.HideKey("Tax");
  EXPECT_EQ(keys.Text(), "|RevQty|Tax|");
  keys.HideKey("Qty");
  EXPECT_EQ(keys.Text(), "|RevQty|Tax|Qty|");
  keys.ShowKey("Tax");
  keys.ShowKey("Absent");
  EXPECT_EQ(keys.Text(), "|RevQty|Qty|");
}

TEST(FieldCaption, JoinsBothSidesOnlyWhereTheyDifferAndAfterTheNextLayout) {
  Laid laid;
  laid.Format();
  EXPECT_EQ(laid.Caption("Field3"), "货位");
  laid.settings.field_captions[3][1] = "发货位";
  EXPECT_EQ(laid.Caption("Field3"), "货位");
  laid.Format();
  EXPECT_EQ(laid.Caption("Field3"), "货位\n发货位");
  laid.settings.journal_type = base::SupplierJournal;
  EXPECT_EQ(FieldCaption(laid.settings, 3), "货位");
  laid.settings.journal_type = base::CustomerJournal;
  EXPECT_EQ(FieldCaption(laid.settings, 3), "发货位");
  laid.settings.journal_type = static_cast<base::tqJournalTypeContants>(5);
  laid.Format();
  EXPECT_EQ(laid.Caption("Field3"), "Field3");
  EXPECT_THROW(FieldCaption(laid.settings, 7), std::out_of_range);
  EXPECT_THROW(FieldCaption(laid.settings, -1), std::out_of_range);
}

}  // namespace
}  // namespace stockbook::grid
