// SPDX-License-Identifier: MIT
// The pieces of a load over a bare grid, without a control: what each takes, puts into the grid and returns.
#include <gtest/gtest.h>

#include <limits>
#include <optional>

#include "journal/blank_cells.h"
#include "journal/infinite_quantities.h"
#include "journal/journal_rows.h"
#include "journal/query_builder.h"
#include "journal/restricted_amounts.h"
#include "journal/running_values.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/base/money.h"
#include "stockbook/platform/error.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/journal_rows.h"

namespace stockbook::journal {
namespace {

using testing::FakeConnection;
using testing::JournalLine;
using testing::Text;
using testing::Whole;

base::Money Amount(const char* text) { return *base::Money::Parse(text); }

const std::vector<JournalLine> kTwoPeriods = {
    {.bill_no = "1", .quantity = 4, .quantity2 = 0.5, .amount = "12.5"},
    {.bill_no = "2", .flag = 1, .quantity = 3, .amount = "8.0001"},
    {.period = "2004-04", .bill_no = "3", .flag = 1, .quantity = 11, .amount = "20"},
};
constexpr Totals kOpening = {10, 1, base::Money::FromUnits(250000)};

class BareJournal : public ::testing::Test {
 protected:
  // The lines in the grid; row 1 is the node of the first period.
  void Lay(const std::vector<JournalLine>& lines) {
    testing::AnswerJournal(connection_, lines);
    const QueryBuilder builder(&connection_, base::MaterialJournal, {7, 0, ""});
    LayRows(connection_.Execute(builder.Build(), platform::kExecuteUnspecified), grid_, grid_);
  }
  Totals Open(base::tqJournalTypeContants type, const std::vector<std::vector<base::Value>>& rows) {
    OpeningBalance balance;
    balance.first_period = "2004-03";
    balance.result = testing::MakeRecordset(
        {"Period", "LastQty", "LastQty2", "LastAcc", "RevQty", "RevQty2", "RevAcc", "IssQty", "IssQty2", "IssAcc"},
        rows);
    return WriteOpeningRow(balance, type, grid_);
  }
  std::string Cell(int row, const char* key) const { return grid_.TextMatrix(row, grid_.ColIndex(key)); }
  base::Value Hidden(int row, const char* key) const { return grid_.CellData(row, grid_.ColIndex(key)); }

  sheet::GridSheet grid_;
  FakeConnection connection_;
};

TEST_F(BareJournal, HasAColumnForEveryFieldAndANodeForEveryPeriod) {
  Lay(kTwoPeriods);
  ASSERT_EQ(grid_.Rows(), 6);
  EXPECT_EQ(grid_.RecordCount(), 3U);
  int column = grid_.FixedCols();
  for (const std::string& name : testing::JournalFieldNames()) EXPECT_EQ(grid_.ColIndex(name), column++);
  EXPECT_EQ(Cell(1, "BillNo"), "2004-03");
  EXPECT_EQ(Cell(3, "BillNo"), "2");
  EXPECT_EQ(Cell(4, "BillNo"), "2004-04");
  EXPECT_TRUE(grid_.IsSubtotal(1) && grid_.IsSubtotal(4));
}

TEST_F(BareJournal, LeavesTheGridAloneWithoutRows) {
  const int columns = grid_.Cols();
  Lay({});
  EXPECT_EQ(grid_.Rows(), grid_.FixedRows());
  EXPECT_EQ(grid_.Cols(), columns);
}

TEST_F(BareJournal, OpensWithTheTotalsOfItsType) {
  Lay(kTwoPeriods);
  const std::vector<std::vector<base::Value>> rows = {
      {Text("2004-03"), Whole(10), Whole(1), Whole(25), Whole(3), Whole(2), Whole(6), Whole(4), Text("?"), Whole(8)}};
  EXPECT_EQ(Open(base::MaterialJournal, rows), kOpening);
  EXPECT_EQ(Open(base::SupplierJournal, rows), (Totals{3, 2, Amount("6")}));
  EXPECT_EQ(Open(base::CustomerJournal, rows), (Totals{4, 0, Amount("8")}));
  EXPECT_EQ(Cell(1, "BillNo") + " " + Cell(1, "StoQty") + " " + Cell(1, "StoAcc"), "2004年03月期初 4 8");
  EXPECT_EQ(Hidden(1, "StoPrice"), base::Value(2.0));
  EXPECT_EQ(Cell(3, "StoPrice"), "2.5") << "the row of the first one";
}

TEST_F(BareJournal, OpensWithZerosWhereNothingWasCarriedForward) {
  Lay(kTwoPeriods);
  EXPECT_EQ(Open(base::MaterialJournal, {}), Totals());
  EXPECT_EQ(Cell(1, "Period") + " " + Cell(1, "StoQty2") + " " + Cell(1, "StoPrice"), "2004-03 0 0");
}

TEST_F(BareJournal, OpensWithZerosWhereTheBalanceCouldNotBeRead) {
  Lay(kTwoPeriods);
  EXPECT_EQ(WriteOpeningRow({"2004-03", std::nullopt}, base::MaterialJournal, grid_), Totals());
  ASSERT_EQ(grid_.Rows(), 7);
  EXPECT_EQ(Cell(1, "BillNo") + " " + Cell(1, "StoQty") + " " + Cell(1, "StoAcc"), "2004年03月期初 0 0");
}

TEST_F(BareJournal, OpensUnderNoPeriodWhereThereIsNone) {
  Lay(kTwoPeriods);
  EXPECT_EQ(WriteOpeningRow({}, base::MaterialJournal, grid_), Totals());
  EXPECT_EQ(Cell(1, "BillNo") + " " + Cell(1, "StoQty"), "期初 0");
}

TEST_F(BareJournal, KeepsAnInfiniteOpeningQuantityAndRefusesSuchAnAmount) {
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  Lay(kTwoPeriods);
  const auto open = [&](double quantity, double amount) {
    return Open(base::MaterialJournal, {{Text("2004-03"), base::Value(quantity), Whole(1), base::Value(amount),
                                         Whole(0), Whole(0), Whole(0), Whole(0), Whole(0), Whole(0)}});
  };
  const Totals opening = open(kInfinite, 5);
  EXPECT_EQ(opening.quantity, kInfinite);
  EXPECT_EQ(Cell(1, "StoQty"), "") << "no zero that hides it";
  const std::string told = DescribeInfiniteQuantity(opening, {}, grid_);
  EXPECT_NE(told.find("期初余额的数量是无穷大"), std::string::npos) << told;
  EXPECT_THROW(open(1, kInfinite), base::ArithmeticError);
}

TEST_F(BareJournal, RefusesAnOpeningAmountOutsideOfTheRangeOfMoney) {
  Lay(kTwoPeriods);
  EXPECT_THROW(Open(base::MaterialJournal, {{Text("2004-03"), Whole(1), Whole(1), base::Value(1e300), Whole(0),
                                             Whole(0), Whole(0), Whole(0), Whole(0), Whole(0)}}),
               base::ArithmeticError);
}

// What is said of a journal whose second line has that quantity.
class InfiniteQuantities : public BareJournal {
 protected:
  std::string Told(double quantity, double quantity2 = 0) {
    grid_.SetRows(grid_.FixedRows());
    grid_.SetCols(grid_.FixedCols());
    Lay({{.bill_no = "1", .quantity = 4},
         {.bill_no = "2", .flag = 1, .quantity = quantity, .quantity2 = quantity2},
         {.period = "2004-04", .bill_no = "3", .flag = 1, .quantity = 1}});
    const std::vector<PeriodTotals> periods = ComputeRunningValues(kOpening, base::MaterialJournal, grid_);
    return DescribeInfiniteQuantity(kOpening, periods, grid_);
  }
};

TEST_F(InfiniteQuantities, AreToldWithTheBillWhereTheyBegin) {
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Told(3), "");
  EXPECT_TRUE(Told(kInfinite).starts_with("单据“2”的数量是无穷大")) << Told(kInfinite);
  EXPECT_TRUE(Told(-kInfinite).starts_with("单据“2”")) << Told(-kInfinite);
  EXPECT_TRUE(Told(3, kInfinite).starts_with("单据“2”")) << "the second quantity too";
}

TEST_F(InfiniteQuantities, AreToldOfSumsThatLeaveTheNumbersToo) {
  constexpr double kMost = std::numeric_limits<double>::max();
  Lay({{.bill_no = "1", .quantity = kMost}, {.bill_no = "2", .quantity = kMost}, {.bill_no = "3", .quantity = 1}});
  const std::vector<PeriodTotals> periods = ComputeRunningValues({}, base::MaterialJournal, grid_);
  EXPECT_TRUE(DescribeInfiniteQuantity({}, periods, grid_).starts_with("单据“2”"));
}

TEST_F(BareJournal, RunsItsValuesFromTheOpeningAndTotalsItsPeriods) {
  Lay(kTwoPeriods);
  const std::vector<PeriodTotals> periods = ComputeRunningValues(kOpening, base::MaterialJournal, grid_);
  EXPECT_EQ(Cell(2, "StoQty") + " " + Cell(3, "StoQty") + " " + Cell(5, "StoQty"), "14 11 0");
  EXPECT_EQ(Cell(2, "StoAcc") + " " + Cell(3, "StoAcc") + " " + Cell(5, "StoAcc"), "37.5 29.4999 9.4999");
  ASSERT_EQ(periods.size(), 2U);
  EXPECT_EQ(periods[0].period, "2004-03");
  EXPECT_EQ(periods[1].begin, 2U);
  EXPECT_EQ(periods[1].end, 3U);
  EXPECT_EQ(periods[0].in_period.receipts, (Totals{4, 0.5, Amount("12.5")}));
  EXPECT_EQ(periods[1].in_period.receipts, Totals());
  EXPECT_EQ(periods[1].in_all.issues, (Totals{14, 0, Amount("28.0001")}));
  EXPECT_EQ(periods[1].in_all.movement, (Totals{-10, 0.5, Amount("-15.5001")}));
}

TEST_F(BareJournal, AddsUpTheIssuesAloneForACustomer) {
  Lay(kTwoPeriods);
  ComputeRunningValues({}, base::CustomerJournal, grid_);
  EXPECT_EQ(Cell(2, "StoQty") + " " + Cell(3, "StoQty") + " " + Cell(5, "StoQty"), "0 3 14");
}

TEST_F(BareJournal, BeginsAPeriodWhereverTheTextChangesThoughItIsNoText) {
  JournalLine odd;
  Lay({odd, odd, odd});
  columns::ColumnBuilder numbers;
  for (const int64_t number : {1, 1, 2}) numbers.AppendInteger(number);
  grid_.ReplaceLoaded(grid_.ColIndex("Period"), numbers.Finish());
  const std::vector<PeriodTotals> periods = ComputeRunningValues({}, base::MaterialJournal, grid_);
  ASSERT_EQ(periods.size(), 2U);
  EXPECT_EQ(periods[1].period, "2");
  EXPECT_EQ(periods[1].begin, 2U);
}

TEST_F(BareJournal, ShowsNothingInThePlaceOfStocksThatCannotBeComputed) {
  Lay({{.quantity = 5, .amount = "922337203685477.5807"}});
  EXPECT_EQ(Cell(2, "StoQty"), "5");
  EXPECT_THROW(ComputeRunningValues(kOpening, base::MaterialJournal, grid_), base::ArithmeticError);
  for (const char* key : base::keys::kRunning) EXPECT_EQ(Cell(2, key), "") << key;
  EXPECT_EQ(Cell(2, "RevQty"), "5");
}

TEST_F(BareJournal, InsertsATotalAfterTheLastRecordOfAPeriod) {
  Lay(kTwoPeriods);
  grid_.SetColDataType(grid_.ColIndex("RevAcc"), platform::DataType::kCurrency);
  grid_.SetColFormat(grid_.ColIndex("RevAcc"), "0.00");
  const std::vector<PeriodTotals> periods = ComputeRunningValues(kOpening, base::MaterialJournal, grid_);
  for (const PeriodTotals& period : periods) InsertTotalRow(period, 540, grid_, grid_);
  ASSERT_EQ(grid_.Rows(), 8);
  EXPECT_EQ(Cell(4, "BillNo") + " " + Cell(7, "BillNo"), "2004年03月合计 2004年04月合计");
  EXPECT_EQ(Cell(4, "Quantity"), "1\n1");
  EXPECT_EQ(Cell(7, "Quantity"), "-11\n-10");
  EXPECT_EQ(Cell(7, "RevAcc"), "0.00\n12.50");
  EXPECT_EQ(Cell(7, "IssQty2"), "0\n0");
  EXPECT_EQ(Cell(7, "StoQty"), "");
  EXPECT_TRUE(grid_.IsSubtotal(7));
  EXPECT_EQ(grid_.RowOutlineLevel(7), 0);
  EXPECT_EQ(grid_.RowHeight(7), 540);
}

TEST_F(BareJournal, HasNoPlaceForTheTotalOfARecordThatIsGone) {
  Lay(kTwoPeriods);
  const std::vector<PeriodTotals> periods = ComputeRunningValues(kOpening, base::MaterialJournal, grid_);
  grid_.SetRows(grid_.FixedRows());
  EXPECT_THROW(InsertTotalRow(periods[0], 540, grid_, grid_), platform::Error);
}

TEST_F(BareJournal, BlanksZerosOfARowsOwnSideAndMasksAmountsOfRecordsAlone) {
  Lay({{.quantity = 4, .amount = "0"}, {.flag = 1, .quantity = 0, .amount = "8"}});
  Open(base::MaterialJournal, {});
  BlankZeroCells(grid_);
  EXPECT_EQ(Cell(3, "RevAcc") + "|" + Cell(3, "IssAcc") + "|" + Cell(4, "IssQty") + "|" + Cell(4, "RevQty"), "|0||0");
  MaskAmounts(grid_);
  EXPECT_EQ(Cell(4, "IssAcc") + Cell(3, "RevAcc") + Cell(3, "Price"), "---");
  EXPECT_EQ(Hidden(4, "IssAcc").AsMoney(), Amount("8"));
  EXPECT_EQ(Cell(3, "RevQty"), "4");
  EXPECT_EQ(Cell(1, "StoAcc"), "0") << "the opening row is no record";
}

}  // namespace
}  // namespace stockbook::journal
