// SPDX-License-Identifier: MIT
#include "journal/running_balance.h"

#include <gtest/gtest.h>

#include <random>

#include "base/number.h"
#include "journal/running_pass.h"
#include "stockbook/columns/column_builder.h"

namespace stockbook::journal {
namespace {

using base::Money;

struct Line {
  double receipt = 0;
  double issue = 0;
  double receipt2 = 0;
  double issue2 = 0;
  int64_t receipt_units = 0;
  int64_t issue_units = 0;
};

struct Columns {
  std::vector<double> quantity, receipt, issue, quantity2, receipt2, issue2;
  std::vector<int64_t> amount, receipt_units, issue_units;
};

Columns ColumnsOf(const std::vector<Line>& lines) {
  Columns columns;
  for (const Line& line : lines) {
    columns.quantity.push_back(line.receipt - line.issue);
    columns.receipt.push_back(line.receipt);
    columns.issue.push_back(line.issue);
    columns.quantity2.push_back(line.receipt2 - line.issue2);
    columns.receipt2.push_back(line.receipt2);
    columns.issue2.push_back(line.issue2);
    columns.amount.push_back(line.receipt_units - line.issue_units);
    columns.receipt_units.push_back(line.receipt_units);
    columns.issue_units.push_back(line.issue_units);
  }
  return columns;
}

struct Result {
  std::vector<double> quantity, quantity2, price;
  std::vector<int64_t> amount;
};

Result RunOver(RunningBalance& balance, const std::vector<Line>& lines) {
  const Columns columns = ColumnsOf(lines);
  const size_t count = lines.size();
  Result result{std::vector<double>(count), std::vector<double>(count), std::vector<double>(count),
                std::vector<int64_t>(count)};
  balance.Add({count,
               {columns.quantity, columns.quantity2, columns.amount},
               {columns.receipt, columns.receipt2, columns.receipt_units},
               {columns.issue, columns.issue2, columns.issue_units}},
              {result.quantity, result.quantity2, result.amount, result.price});
  return result;
}

TEST(RunningBalance, GoesNegativeWhenAnIssueExceedsTheStock) {
  RunningBalance balance(BalanceKind::kStock, {5, 0, Money::FromInteger(10)});
  const Result result = RunOver(balance, {{.issue = 8, .issue_units = 160000}});
  EXPECT_EQ(result.quantity[0], -3);
  EXPECT_EQ(result.amount[0], -60000);
  EXPECT_EQ(result.price[0], 2);
}

TEST(RunningBalance, HasNoPriceWhenTheQuantityIsExactlyZero) {
  RunningBalance balance(BalanceKind::kStock, {5, 0, Money::FromInteger(10)});
  const Result result = RunOver(balance, {{.issue = 5, .issue_units = 30000}});
  EXPECT_EQ(result.quantity[0], 0);
  EXPECT_EQ(result.amount[0], 70000);
  EXPECT_EQ(result.price[0], 0);
}

TEST(RunningBalance, AccumulatesReceiptsOrIssuesInThePartnerJournals) {
  const std::vector<Line> lines = {
      {.receipt = 3, .issue = 2, .receipt2 = 1, .issue2 = 4, .receipt_units = 30, .issue_units = 20}};
  RunningBalance supplier(BalanceKind::kReceipts, {10, 1, Money::FromUnits(100)});
  EXPECT_EQ(RunOver(supplier, lines).quantity[0], 13);
  EXPECT_EQ(supplier.Running(), (Totals{13, 2, Money::FromUnits(130)}));
  RunningBalance customer(BalanceKind::kIssues, {10, 1, Money::FromUnits(100)});
  RunOver(customer, lines);
  EXPECT_EQ(customer.Running(), (Totals{12, 5, Money::FromUnits(120)}));
  RunningBalance other(BalanceKindOf(static_cast<base::tqJournalTypeContants>(7)), {10, 1, Money::FromUnits(100)});
  RunOver(other, lines);
  EXPECT_EQ(other.Running(), (Totals{10, 1, Money::FromUnits(100)}));
}

TEST(RunningBalance, LeavesTheOpeningBalanceOutOfTheSums) {
  RunningBalance balance(BalanceKind::kStock, {100, 50, Money::FromInteger(1000)});
  RunOver(balance, {{.receipt = 3, .receipt_units = 30000}});
  balance.StartPeriod();
  RunOver(balance, {{.issue = 1, .issue_units = 10000}});
  EXPECT_EQ(balance.Period().movement.quantity, -1);
  EXPECT_EQ(balance.Period().receipts, Totals());
  EXPECT_EQ(balance.Cumulative().movement, (Totals{2, 0, Money::FromInteger(2)}));
  EXPECT_EQ(balance.Cumulative().receipts.amount, Money::FromInteger(3));
}

TEST(RunningBalance, AddsBeforeItSubtractsWhenARowHasBoth) {
  // 1e16 + 1 is not exact, so the order shows.
  RunningBalance balance(BalanceKind::kStock, {1e16, 0, Money()});
  const Result result = RunOver(balance, {{.receipt = 1, .issue = 1e16}});
  EXPECT_EQ(result.quantity[0], (1e16 + 1.0) - 1e16);
}

TEST(RunningBalance, RefusesAnAmountBeyondTheRangeOfMoney) {
  RunningBalance balance(BalanceKind::kStock, {0, 0, Money::FromUnits(INT64_MAX)});
  EXPECT_THROW(RunOver(balance, {{.receipt = 1, .receipt_units = 1}}), base::ArithmeticError);
  RunningBalance sums(BalanceKind::kNone, {});
  EXPECT_THROW(RunOver(sums, {{.receipt_units = INT64_MAX}, {.receipt_units = 1}}), base::ArithmeticError);
}

TEST(RunningBalance, EqualsTheRuleRowByRowOnRandomLines) {
  std::mt19937 random(5);
  std::vector<Line> lines(2048);
  for (Line& line : lines) {
    const double quantity = static_cast<double>(random() % 100000) / 7.0;
    const auto units = static_cast<int64_t>(random() % 1000000);
    if (random() % 2 == 0)
      line = {.receipt = quantity, .receipt2 = quantity / 3, .receipt_units = units};
    else
      line = {.issue = quantity, .issue2 = quantity / 3, .issue_units = units};
  }
  RunningBalance balance(BalanceKind::kStock, {1.1, 2.2, Money::FromUnits(33)});
  const Result result = RunOver(balance, lines);
  double quantity = 1.1;
  double quantity2 = 2.2;
  int64_t units = 33;
  double receipts = 0;
  for (size_t row = 0; row < lines.size(); ++row) {
    quantity = quantity + lines[row].receipt;
    quantity = quantity - lines[row].issue;
    quantity2 = quantity2 + lines[row].receipt2;
    quantity2 = quantity2 - lines[row].issue2;
    units += lines[row].receipt_units - lines[row].issue_units;
    receipts += lines[row].receipt;
    ASSERT_EQ(result.quantity[row], quantity);
    ASSERT_EQ(result.quantity2[row], quantity2);
    ASSERT_EQ(result.amount[row], units);
    ASSERT_EQ(result.price[row], base::SafeDivide(Money::FromUnits(units).ToDouble(), quantity));
  }
  EXPECT_EQ(balance.Cumulative().receipts.quantity, receipts);
}

columns::Column ColumnOf(size_t rows, double (*value)(size_t)) {
  columns::ColumnBuilder builder;
  for (size_t row = 0; row < rows; ++row) builder.AppendDouble(value(row));
  return builder.Finish();
}

TEST(RunningPass, WalksColumnsOverBlocksAndPeriodsAndSkipsZeroColumns) {
  constexpr size_t kRows = 70000;
  const columns::Column receipts = ColumnOf(kRows, [](size_t row) { return row % 3 == 0 ? 2.5 : 0.0; });
  const columns::Column issues = ColumnOf(kRows, [](size_t row) { return row % 3 == 0 ? 0.0 : 1.0; });
  const columns::Column movement = ColumnOf(kRows, [](size_t row) { return row % 3 == 0 ? 2.5 : -1.0; });
  const columns::Column zeros = columns::Column::Constant(base::Value(int64_t{0}), kRows);
  RunningBalance balance(BalanceKind::kStock, {});
  RunningPass pass(balance, {&movement, &zeros, &movement}, {&receipts, nullptr, &receipts},
                   {&issues, &zeros, &issues});
  RunningBuilder running;
  pass.Run(0, 3000, running);
  EXPECT_EQ(balance.Period().receipts.quantity, 2500);
  balance.StartPeriod();
  pass.Run(3000, kRows, running);
  const columns::Column quantity = running.quantity.Finish();
  const columns::Column amount = running.amount.Finish();
  const columns::Column price = running.price.Finish();
  const columns::Column quantity2 = running.quantity2.Finish();
  ASSERT_EQ(quantity.size(), kRows);
  EXPECT_EQ(quantity2.ConstantValue(), base::Value(0.0));
  double stock = 0;
  for (size_t row = 0; row < kRows; ++row) {
    stock += row % 3 == 0 ? 2.5 : -1.0;
    ASSERT_EQ(quantity.Number(row), stock);
    ASSERT_EQ(amount.At(row), base::Value(Money::FromDouble(stock)));
    ASSERT_EQ(price.Number(row), stock == 0 ? 0 : 1);
  }
}

}  // namespace
}  // namespace stockbook::journal
