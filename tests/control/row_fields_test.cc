// SPDX-License-Identifier: MIT
#include "stockbook/control/row_fields.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "stockbook/base/money.h"
#include "stockbook/base/value.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/journal/amount_texts.h"
#include "support/fake_surroundings.h"
#include "support/faulty_grid.h"
#include "support/journal_rows.h"

namespace stockbook::control {
namespace {

using base::Money;
using testing::ControlOverFakes;
using testing::FakeConnection;
using testing::FaultyGrid;
using testing::JournalLine;
using testing::Text;
using testing::Whole;

template <typename AnyField>
concept Writable = requires(const RowFields& rows, const AnyField& field) {
  rows.Set(field, 1, {});
};

// A grid of one row with one column for a field.
class RowOf {
 public:
  explicit RowOf(const char* key) {
    grid.SetRows(3);
    grid.SetCols(3);
    grid.SetFixedRows(1);
    grid.SetFixedCols(1);
    grid.SetColKey(2, key);
    grid.Select(1, 1);
  }
  RowFields Shown() { return {grid, nullptr, AmountTexts::kShown}; }
  RowFields Masked() { return {grid, nullptr, AmountTexts::kMasked}; }
  sheet::GridSheet grid;
};

// Money and prices: read from the hidden data in their own type; written there and, masked or not, as text.
template <typename Type, typename AnyField>
void ExpectMasked(const AnyField& field, const char* key) {
  SCOPED_TRACE(key);
  ASSERT_STREQ(field.key, key);
  Type value;
  if constexpr (std::is_same_v<Type, Money>)
    value = Money::FromDouble(12.5);
  else
    value = 12.5;
  RowOf row(key);
  row.grid.SetTextMatrix(1, 2, "99");
  EXPECT_EQ(row.Shown().Get(field, 1), Type()) << "the text does not count";
  row.Shown().Set(field, 1, value);
  EXPECT_EQ(row.grid.TextMatrix(1, 2), "12.5");
  EXPECT_EQ(row.grid.CellData(1, 2), base::Value(value)) << "with its own type";
  row.Masked().Set(field, 2, value);
  EXPECT_EQ(row.grid.TextMatrix(2, 2), "-");
  static_assert(std::is_same_v<decltype(row.Masked().Get(field, 2)), Type>);
  EXPECT_EQ(row.Masked().Get(field, 2), value);
}

TEST(RowFields, KeepMoneyAndPricesInTheHiddenDataBesideAMaskedText) {
  ExpectMasked<double>(fields::Price, "Price");
  ExpectMasked<Money>(fields::Account, "Account");
  ExpectMasked<Money>(fields::RevAcc, "RevAcc");
  ExpectMasked<Money>(fields::IssAcc, "IssAcc");
  ExpectMasked<double>(fields::StoPrice, "StoPrice");
  ExpectMasked<Money>(fields::StoAcc, "StoAcc");
  ExpectMasked<Money>(fields::TaxRate, "TaxRate");
  ExpectMasked<Money>(fields::Tax, "Tax");
  ExpectMasked<double>(fields::TaxPrice, "TaxPrice");
  ExpectMasked<Money>(fields::TaxAccount, "TaxAccount");
}

TEST(RowFields, KeepQuantitiesInTheTextAndNeverMaskThem) {
  const std::pair<fields::Counted, const char*> quantities[] = {{fields::Quantity, "Quantity"},
                                                                {fields::RevQty, "RevQty"},
                                                                {fields::IssQty, "IssQty"},
                                                                {fields::StoQty, "StoQty"}};
  for (const auto& [field, key] : quantities) {
    SCOPED_TRACE(key);
    ASSERT_STREQ(field.key, key);
    RowOf row(key);
    row.grid.SetCellData(1, 2, base::Value(99.0));
    EXPECT_EQ(row.Shown().Get(field, 1), 0) << "of an empty text";
    row.grid.SetTextMatrix(1, 2, "1,234.5");
    EXPECT_EQ(row.Shown().Get(field, 1), 1234.5);
    row.Masked().Set(field, 1, -0.25);
    EXPECT_EQ(row.grid.TextMatrix(1, 2), "-0.25");
    EXPECT_EQ(row.grid.CellData(1, 2), base::Value(99.0));
  }
}

TEST(RowFields, ReadTextsAsTheyAreAndLetNobodyWriteThem) {
  static_assert(!Writable<fields::Texts>);
  const std::pair<fields::Texts, const char*> texts[] = {
      {fields::AccPeriod, "AccPeriod"},   {fields::BillNo, "BillNo"},           {fields::BillKind, "BillKind"},
      {fields::Explain, "Explain"},       {fields::Field0, "Field0"},           {fields::Field1, "Field1"},
      {fields::Field2, "Field2"},         {fields::Field3, "Field3"},           {fields::Deadline, "Deadline"},
      {fields::SerialNo, "SerialNo"},     {fields::ProductDate, "ProductDate"}, {fields::Depot, "Depot"},
      {fields::Enterprise, "Enterprise"}, {fields::Project, "Project"},         {fields::ProjNo, "ProjNo"},
      {fields::Inputor, "Inputor"},       {fields::InputDate, "InputDate"},     {fields::Auditor, "Auditor"},
      {fields::AuditDate, "AuditDate"},   {fields::BillName, "BillName"}};
  for (const auto& [field, key] : texts) {
    SCOPED_TRACE(key);
    ASSERT_STREQ(field.key, key);
    RowOf row(key);
    row.grid.SetTextMatrix(1, 2, " 2005-03-08 甲 ");
    row.grid.SetCellData(1, 2, Text("other"));
    EXPECT_EQ(row.Shown().Get(field, 1), " 2005-03-08 甲 ");
  }
}

TEST(RowFields, ReadKeysFromTheNumberAsWholeNumbers) {
  static_assert(!Writable<fields::Key> && Writable<decltype(fields::pdID)>);
  const std::pair<fields::Key, const char*> keys[] = {{fields::RecID, "RecID"},     {fields::dpID, "dpID"},
                                                      {fields::ksID, "ksID"},       {fields::pjID, "pjID"},
                                                      {fields::OtherID, "OtherID"}, {fields::BillID, "BillID"}};
  for (const auto& [field, key] : keys) {
    SCOPED_TRACE(key);
    ASSERT_STREQ(field.key, key);
    RowOf row(key);
    row.grid.SetTextMatrix(1, 2, "-2147483648");
    EXPECT_EQ(row.Shown().Get(field, 1), INT32_MIN);
    row.grid.SetTextMatrix(1, 2, "2147483648");
    EXPECT_EQ(row.Shown().Get(field, 1), 0) << "too large";
    row.grid.SetTextMatrix(1, 2, "2.5");
    EXPECT_EQ(row.Shown().Get(field, 1), 2) << "half to even";
    row.grid.SetTextMatrix(1, 2, "number 3");
    EXPECT_EQ(row.Shown().Get(field, 1), 0);
  }
  RowOf row("pdID");
  row.grid.SetTextMatrix(1, 2, "12");
  EXPECT_EQ(row.Shown().Get(fields::pdID, 1), 12);
}

TEST(RowFields, ReadTheFlagInSixteenBits) {
  static_assert(!Writable<decltype(fields::Flag)>);
  static_assert(std::is_same_v<decltype(std::declval<RowFields>().Get(fields::Flag)), int16_t>);
  RowOf row("Flag");
  row.grid.SetTextMatrix(1, 2, "32767");
  EXPECT_EQ(row.Shown().Get(fields::Flag, 1), 32767);
  row.grid.SetTextMatrix(1, 2, "32768");
  EXPECT_EQ(row.Shown().Get(fields::Flag, 1), 0);
}

TEST(RowFields, ReadTheBillDateAloneAsADate) {
  static_assert(!Writable<decltype(fields::BillDate)>);
  RowOf row("BillDate");
  row.grid.SetTextMatrix(1, 2, "2005-3-8");
  EXPECT_EQ(row.Shown().Get(fields::BillDate, 1), *base::Date::Parse("2005-03-08"));
  for (const char* text : {"", "none", "2005-02-30"}) {
    row.grid.SetTextMatrix(1, 2, text);
    EXPECT_TRUE(row.Shown().Get(fields::BillDate, 1).IsZero()) << text;
  }
}

TEST(RowFields, MeanTheCurrentRowByAnyRowBelowZero) {
  RowOf row("Price");
  row.grid.Select(2, 1);
  row.Shown().Set(fields::Price, -5, 7.5);
  EXPECT_EQ(row.grid.TextMatrix(2, 2), "7.5");
  for (const int32_t negative : {-1, -5, INT32_MIN}) EXPECT_EQ(row.Shown().Get(fields::Price, negative), 7.5);
  EXPECT_EQ(row.Shown().Get(fields::Price), 7.5);
  EXPECT_EQ(row.Shown().Get(fields::Price, 1), 0);
}

TEST(RowFields, AreEmptyWithoutTheirColumnOrRow) {
  RowOf row("Nothing");
  for (const int32_t at : {1, 3, 1000000}) {
    EXPECT_EQ(row.Shown().Get(fields::Price, at), 0);
    EXPECT_EQ(row.Shown().Get(fields::Quantity, at), 0);
    EXPECT_EQ(row.Shown().Get(fields::Account, at), Money());
    EXPECT_EQ(row.Shown().Get(fields::BillNo, at), "");
    EXPECT_TRUE(row.Shown().Get(fields::BillDate, at).IsZero());
    EXPECT_EQ(row.Shown().Get(fields::RecID, at), 0);
    EXPECT_NO_THROW(row.Shown().Set(fields::Price, at, 1));
    EXPECT_NO_THROW(row.Shown().Set(fields::Quantity, at, 1));
    EXPECT_NO_THROW(row.Shown().Set(fields::pdID, at, 1));
  }
  RowOf other("Price");
  EXPECT_NO_THROW(other.Shown().Set(fields::Price, 3, 1));
  EXPECT_EQ(other.Shown().Get(fields::Price, 3), 0);
}

TEST(RowFields, TrapWhateverTheGridThrowsAndLeaveWhatIsWritten) {
  RowOf row("Price");
  FaultyGrid faulty(row.grid);
  const RowFields rows(faulty, nullptr, AmountTexts::kShown);
  for (int call = 1; call <= 4; ++call) {
    faulty.RefuseCall(call);
    EXPECT_NO_THROW(rows.Set(fields::Price, 1, 10.0 + call));
    faulty.RefuseCall(0);
  }
  EXPECT_EQ(rows.Get(fields::Price, 1), 14) << "the data was written before the text was refused";
  EXPECT_EQ(row.grid.TextMatrix(1, 2), "");
  faulty.RefuseCall(2);
  EXPECT_EQ(rows.Get(fields::Price, 1), 0);
  faulty.RefuseCall(2);
  EXPECT_EQ(rows.Get(fields::Quantity, 1), 0);
}

TEST(RowFields, MaskAsTheControlRestrictsNow) {
  ControlOverFakes fakes;
  fakes.fg.SetRows(2);
  fakes.control->SetAccRestrict("true");
  fakes.control->Fields().Set(fields::Price, 1, 12.5);
  EXPECT_EQ(fakes.fg.DisplayText(1, fakes.fg.ColIndex("Price")), "-");
  EXPECT_EQ(fakes.control->Fields().Get(fields::Price, 1), 12.5);
  fakes.control->SetAccRestrict("false");
  fakes.control->Fields().Set(fields::Price, 1, 12.5);
  EXPECT_EQ(fakes.fg.TextMatrix(1, fakes.fg.ColIndex("Price")), "12.5") << "without a format";
  EXPECT_EQ(fakes.fg.DisplayText(1, fakes.fg.ColIndex("Price")), "12.50");
}

TEST(RowFields, ReadAmountsOfARestrictedJournalAllTheSame) {
  ControlOverFakes fakes;
  auto connection = std::make_shared<FakeConnection>();
  testing::AnswerJournal(*connection, {{.quantity = 4, .amount = "50", .price = 12.5}});
  fakes.control->SetConn(connection);
  fakes.control->SetAccRestrict("1");
  ASSERT_TRUE(fakes.control->Load(7));
  const int row = fakes.fg.RowOfRecord(0);
  EXPECT_EQ(fakes.fg.DisplayText(row, fakes.fg.ColIndex("Price")), "-");
  EXPECT_EQ(fakes.control->Fields().Get(fields::Price, row), 12.5);
  EXPECT_EQ(fakes.control->Fields().Get(fields::RevAcc, row), Money::FromInteger(50));
  EXPECT_EQ(fakes.control->Fields().Get(fields::Quantity, row), 4);
  EXPECT_EQ(fakes.control->Fields().Get(fields::BillDate, row), *base::Date::Parse("2004-03-05"));
}

// Rows with product keys, of which ten are in view.
class ProductRows : public ::testing::Test {
 protected:
  void Load(const std::vector<int64_t>& products) {
    columns::ColumnBuilder builder;
    for (const int64_t product : products) builder.AppendInteger(product);
    std::vector<columns::Column> columns;
    columns.push_back(builder.Finish());
    grid_.SetFixedRows(1);
    grid_.SetCols(2);
    grid_.SetFixedCols(1);
    grid_.LoadColumns(std::move(columns), 1);
    grid_.SetColKey(1, "pdID");
    grid_.SetRowHeight(-1, 300);
    grid_.view().SetSize({200, 220}, 1);
    grid_.Select(1, 1);
  }
  void Seek(int32_t product) { RowFields(grid_, nullptr, AmountTexts::kShown).Set(fields::pdID, -1, product); }
  sheet::GridSheet grid_;
};

TEST_F(ProductRows, TheFirstRowOfAProductBecomesCurrentAndOnTopWhenItWasBelow) {
  std::vector<int64_t> products(200, 3);
  products[2] = 8;
  products[99] = 5;
  products[150] = 5;
  Load(products);
  Seek(8);
  EXPECT_EQ(grid_.Row(), 3);
  EXPECT_EQ(grid_.TopRow(), 1) << "it was in sight";
  Seek(5);
  EXPECT_EQ(grid_.Row(), 100);
  EXPECT_EQ(grid_.TopRow(), 100);
  Seek(3);
  EXPECT_EQ(grid_.Row(), 1);
  EXPECT_EQ(grid_.TopRow(), 1);
}

TEST_F(ProductRows, AProductThatNoRowHoldsChangesNothing) {
  Load({3, 4, 0, -4});
  grid_.Select(2, 1);
  for (const int32_t none : {5, 0, -4}) {
    Seek(none);
    EXPECT_EQ(grid_.Row(), 2) << none;
  }
}

TEST_F(ProductRows, RowsBetweenTheRecordsAndEditedOnesCountAsTheyStand) {
  Load({3, 4, 5, 6, 5});
  grid_.AddItem("\t5", 2);
  grid_.AddItem("", 2);
  Seek(5);
  EXPECT_EQ(grid_.Row(), 3);
  grid_.SetTextMatrix(1, 1, "5");
  Seek(5);
  EXPECT_EQ(grid_.Row(), 1);
  Seek(6);
  EXPECT_EQ(grid_.Row(), 6);
}

TEST_F(ProductRows, AreFoundByAPassOverTheColumnAndNotOverCells) {
  std::vector<int64_t> products(1000000, 3);
  products.back() = 4;
  Load(products);
  FaultyGrid counting(grid_);
  counting.RefuseCall(100);
  RowFields(counting, nullptr, AmountTexts::kShown).Set(fields::pdID, -1, 4);
  EXPECT_FALSE(counting.HasRefused());
  EXPECT_EQ(grid_.Row(), 1000000);
}

class IssueSource : public ::testing::Test {
 protected:
  IssueSource() : connection_(std::make_shared<FakeConnection>()) {
    fakes_.control->SetConn(connection_);
    fakes_.fg.SetRows(4);
  }
  std::string Of(const char* other_id, int32_t row = 2) {
    fakes_.fg.SetTextMatrix(2, fakes_.fg.ColIndex("OtherID"), other_id);
    return fakes_.control->Fields().IssueSource(row);
  }
  void AnswerReceipt(base::Value date) {
    connection_->Answer("SELECT d.BillID", {"BillID", "BillDate", "BillName", "BillNo", "DepotName"},
                        {{Whole(9), std::move(date), Text("采购入库"), Text("12"), Text("总库")},
                         {Whole(9), base::Value(), Text("second"), Text("13"), Text("record")}});
  }
  ControlOverFakes fakes_;
  std::shared_ptr<FakeConnection> connection_;
};

TEST_F(IssueSource, OfAReceiptIsAskedForByTheRecordsKey) {
  AnswerReceipt(base::Value(*base::Date::Parse("2005-03-08 13:30")));
  EXPECT_EQ(Of("88"), "出库自“总库”：2005年03月08日采购入库第 12 号");
  EXPECT_EQ(connection_->Sent(),
            std::vector<std::string>{
                "SELECT d.BillID, CDate(d.年份 & '-' & d.月份 & '-' & d.日子) AS BillDate, d.单据类型 AS BillName, "
                "d.单据编号 AS BillNo, 仓库设置.仓库名称 AS DepotName FROM (入库目录 AS d INNER JOIN 入库记录 AS r ON "
                "d.BillID = r.BillID) LEFT JOIN 仓库设置 ON r.dpID = 仓库设置.dpID Where r.RecID=88"});
}

TEST_F(IssueSource, OfAnOpeningBalanceIsAskedForByItsKey) {
  connection_->Answer("SELECT 仓库余额表.*", {"ID", "年份", "月份", "仓库名称"},
                      {{Whole(31), Whole(2005), Whole(1), Text("总库")}});
  EXPECT_EQ(Of("-31"), "出库自“总库”：2005年1月期初库存");
  EXPECT_EQ(connection_->Sent(),
            std::vector<std::string>{"SELECT 仓库余额表.*, 仓库设置.仓库名称, * FROM 仓库余额表 LEFT JOIN 仓库设置 ON "
                                     "仓库余额表.DpID = 仓库设置.dpID  Where ID=31"});
}

TEST_F(IssueSource, OfALineWithoutOneIsEmptyAndAsksNothing) {
  EXPECT_EQ(Of("0"), "");
  EXPECT_EQ(Of(""), "");
  EXPECT_TRUE(connection_->Sent().empty());
}

TEST_F(IssueSource, TakesRowZeroForTheCurrentRowAndNoRowBelowZero) {
  AnswerReceipt(Text("2005-3-8"));
  fakes_.fg.Select(2, 1);
  EXPECT_EQ(Of("88", 0), "出库自“总库”：2005年03月08日采购入库第 12 号");
  connection_->Forget();
  EXPECT_EQ(Of("88", -1), "");
  EXPECT_EQ(Of("88", 3), "") << "another row";
  EXPECT_EQ(Of("88", 99), "");
  EXPECT_TRUE(connection_->Sent().empty());
}

TEST_F(IssueSource, IsEmptyWhenTheDatabaseKnowsNoneOrFails) {
  connection_->Answer("SELECT d.BillID", {"BillID", "BillDate", "BillName", "BillNo", "DepotName"}, {});
  EXPECT_EQ(Of("88"), "");
  EXPECT_EQ(Of("-31"), "") << "the statement fails";
  fakes_.control->SetConn(nullptr);
  EXPECT_EQ(Of("88"), "");
}

TEST_F(IssueSource, LeavesMissingNamesOut) {
  AnswerReceipt(base::Value());
  EXPECT_EQ(Of("88"), "出库自“总库”：采购入库第 12 号");
}

}  // namespace
}  // namespace stockbook::control
