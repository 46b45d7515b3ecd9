// SPDX-License-Identifier: MIT
#include "stockbook/selection/selection_sums.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "stockbook/columns/column_builder.h"
#include "support/sample_ledger.h"

namespace stockbook::app {
namespace {

using testing::SampleLedger;

// The sample ledger, whose stored numbers have more decimals than are shown.
class SummedLedger : public ::testing::Test {
 protected:
  SummedLedger() { SampleLedger({3, 40}).Fill(sheet_); }

  SelectionSums Sums(int row1, int column1, int row2, int column2) const {
    return SelectionSums::Of(sheet_, {{row1, column1}, {row2, column2}});
  }
  SelectionSums SumsOfAll() const { return Sums(0, 0, sheet_.Rows() - 1, sheet_.Cols() - 1); }
  int LastRow() const { return sheet_.Rows() - 1; }

  sheet::GridSheet sheet_;
};

TEST_F(SummedLedger, SumsUpTheLinesOfAColumnAndNotItsTotals) {
  double sum = 0;
  double least = 1e300;
  double greatest = -1e300;
  int count = 0;
  for (size_t record = 0; record < sheet_.RecordCount(); ++record) {
    const int row = sheet_.RowOfRecord(record);
    if (sheet_.TextMatrix(row, testing::kLedgerRevAcc).empty()) continue;
    const double number = sheet_.ValueMatrix(row, testing::kLedgerRevAcc);
    sum += number;
    least = std::min(least, number);
    greatest = std::max(greatest, number);
    ++count;
  }
  ASSERT_GT(count, 10);
  const SelectionSums sums = Sums(0, testing::kLedgerRevAcc, LastRow(), testing::kLedgerRevAcc);
  EXPECT_EQ(sums.count(), count);
  EXPECT_NEAR(sums.sum(), sum, 1e-6);
  EXPECT_NEAR(sums.average(), sum / count, 1e-6);
  EXPECT_EQ(sums.least(), least);
  EXPECT_EQ(sums.greatest(), greatest);
}

TEST_F(SummedLedger, TheDirectionOfTheSelectionDoesNotMatter) {
  const SelectionSums down = Sums(3, testing::kLedgerPrice, 20, testing::kLedgerStoAcc);
  const SelectionSums up = Sums(20, testing::kLedgerStoAcc, 3, testing::kLedgerPrice);
  EXPECT_GT(down.count(), 0);
  EXPECT_EQ(down.count(), up.count());
  EXPECT_EQ(down.SumText(), up.SumText());
}

TEST_F(SummedLedger, TextsAndCaptionsAreNoNumbers) {
  EXPECT_EQ(Sums(0, testing::kLedgerBill, LastRow(), testing::kLedgerExplain).count(), 0);
  EXPECT_EQ(Sums(0, testing::kLedgerPrice, 0, testing::kLedgerStoAcc).count(), 0);
  EXPECT_EQ(SelectionSums::Of(sheet_, {}).count(), 0);
}

TEST_F(SummedLedger, WhatIsNotShownDoesNotCount) {
  const int64_t all = SumsOfAll().count();
  sheet_.SetColHidden(testing::kLedgerStoQty, true);
  EXPECT_EQ(SumsOfAll().count(), all - static_cast<int64_t>(sheet_.RecordCount()));
  sheet_.SetColHidden(testing::kLedgerStoQty, false);
  sheet_.SetIsCollapsed(sheet_.NextSubtotal(0), true);
  const int64_t closed = SumsOfAll().count();
  EXPECT_LT(closed, all);
  EXPECT_GT(closed, all / 2);
}

TEST_F(SummedLedger, AmountsThatAreHiddenAreNotSummedUp) {
  const int first = sheet_.RowOfRecord(0);
  const int last = sheet_.RowOfRecord(3);
  ASSERT_GT(Sums(first, testing::kLedgerStoAcc, last, testing::kLedgerStoAcc).count(), 0);
  // As the control hides them: the amounts stay behind the texts.
  sheet_.ReplaceLoadedText(testing::kLedgerStoAcc,
                           columns::Column::Constant(base::Value(std::string("-")), sheet_.RecordCount()));
  EXPECT_EQ(Sums(first, testing::kLedgerStoAcc, last, testing::kLedgerStoAcc).count(), 0);
}

TEST_F(SummedLedger, WrittenNumbersCountAsTheyAreNow) {
  const int row = sheet_.RowOfRecord(5);
  const SelectionSums before = Sums(row, testing::kLedgerPrice, row + 2, testing::kLedgerPrice);
  ASSERT_EQ(before.count(), 3);
  sheet_.SetTextMatrix(row, testing::kLedgerPrice, "1,000.5");
  const SelectionSums after = Sums(row, testing::kLedgerPrice, row + 2, testing::kLedgerPrice);
  EXPECT_EQ(after.count(), 3);
  EXPECT_EQ(after.greatest(), 1000.5);
  sheet_.SetTextMatrix(row, testing::kLedgerPrice, "没有");
  EXPECT_EQ(Sums(row, testing::kLedgerPrice, row + 2, testing::kLedgerPrice).count(), 2);
}

TEST_F(SummedLedger, RowsWithoutLinesCountWhereNothingElseIsSelected) {
  sheet_.AddItem("", 1);
  sheet_.SetTextMatrix(1, testing::kLedgerStoQty, "12.5");
  EXPECT_EQ(Sums(1, testing::kLedgerStoQty, 1, testing::kLedgerStoAcc).SumText(), "12.50");
  const int line = sheet_.RowOfRecord(0);
  EXPECT_EQ(Sums(1, testing::kLedgerStoQty, line, testing::kLedgerStoQty).count(), 1) << "the line alone";
}

// A sheet of one column of numbers.
SelectionSums ColumnSums(columns::ColumnBuilder numbers) {
  sheet::GridSheet sheet;
  std::vector<columns::Column> columns;
  columns.push_back(numbers.Finish());
  sheet.SetCols(2);
  sheet.LoadColumns(std::move(columns), 1);
  return SelectionSums::Of(sheet, {{0, 0}, {sheet.Rows() - 1, 1}});
}

TEST(SelectionSums, EmptyCellsAreNoZerosAndZerosAreNumbers) {
  columns::ColumnBuilder numbers;
  numbers.AppendDouble(0);
  numbers.AppendNull();
  numbers.AppendDouble(5);
  numbers.AppendNull();
  numbers.AppendDouble(3);
  const SelectionSums sums = ColumnSums(std::move(numbers));
  EXPECT_EQ(sums.count(), 3);
  EXPECT_EQ(sums.least(), 0);
  EXPECT_EQ(sums.greatest(), 5);
  EXPECT_EQ(sums.SumText(), "8");
}

TEST(SelectionSums, OnlyNegativeNumbersHaveAGreatestBelowZero) {
  columns::ColumnBuilder numbers;
  numbers.AppendDouble(-2.5);
  numbers.AppendNull();
  numbers.AppendDouble(-0.5);
  const SelectionSums sums = ColumnSums(std::move(numbers));
  EXPECT_EQ(sums.least(), -2.5);
  EXPECT_EQ(sums.greatest(), -0.5);
  EXPECT_EQ(sums.SumText(), "-3");
}

TEST(SelectionSums, SumsOfMoneyAreExact) {
  columns::ColumnBuilder numbers;
  for (int line = 0; line < 3000; ++line) numbers.AppendMoney(base::Money::FromUnits(1));
  numbers.AppendMoney(base::Money::FromUnits(900'000'000'000'000'000));
  const SelectionSums sums = ColumnSums(std::move(numbers));
  EXPECT_EQ(sums.count(), 3001);
  EXPECT_EQ(sums.SumText(), "90,000,000,000,000.3") << "a double would lose the end";
}

TEST(SelectionSums, SumsBeyondMoneyAreStillTold) {
  columns::ColumnBuilder numbers;
  for (int line = 0; line < 20; ++line) numbers.AppendMoney(base::Money::FromUnits(9'000'000'000'000'000'000));
  const SelectionSums sums = ColumnSums(std::move(numbers));
  EXPECT_EQ(sums.count(), 20);
  EXPECT_NEAR(sums.sum() / (20 * 9e14), 1, 1e-12);
  EXPECT_EQ(sums.greatest(), 9e14);
  EXPECT_EQ(sums.SumText(), "18,000,000,000,000,000");
}

TEST(SelectionSums, LongDoublesAndMixedValuesCount) {
  columns::ColumnBuilder numbers;
  numbers.AppendDouble(1.0 / 3);
  numbers.AppendDouble(2.0 / 3);
  EXPECT_NEAR(ColumnSums(std::move(numbers)).sum(), 1, 1e-12);
  columns::ColumnBuilder mixed;
  mixed.AppendText("12");
  mixed.AppendDouble(7);
  mixed.AppendMoney(base::Money::FromUnits(5000));
  mixed.AppendDate(base::Date::FromSeconds(86400));
  const SelectionSums sums = ColumnSums(std::move(mixed));
  EXPECT_EQ(sums.count(), 2);
  EXPECT_EQ(sums.SumText(), "7.5");
}

TEST(SelectionSums, TextsInAColumnOfNumbersCountAsTheNumbersThatTheySpell) {
  columns::ColumnBuilder texts;
  for (int line = 0; line < 10; ++line) texts.AppendText(line % 2 == 0 ? "1,000.25" : "-");
  sheet::GridSheet sheet;
  std::vector<columns::Column> columns;
  columns.push_back(texts.Finish());
  sheet.SetCols(2);
  sheet.LoadColumns(std::move(columns), 1);
  const sheet::Selection all{{0, 0}, {sheet.Rows() - 1, 1}};
  EXPECT_EQ(SelectionSums::Of(sheet, all).count(), 0) << "a column of texts";
  sheet.SetColDataType(1, platform::DataType::kCurrency);
  EXPECT_EQ(SelectionSums::Of(sheet, all).count(), 5);
  EXPECT_EQ(SelectionSums::Of(sheet, all).SumText(), "5,001.25");
  EXPECT_EQ(SelectionSums::Of(sheet, {{1, 1}, {1, 0}}).SumText(), "1,000.25") << "one line, fewer than texts";
}

TEST(SelectionSums, ManyRowsAreCountedWholly) {
  columns::ColumnBuilder numbers;
  for (int line = 0; line < 70'000; ++line) numbers.AppendInteger(line % 1000);
  const SelectionSums sums = ColumnSums(std::move(numbers));
  EXPECT_EQ(sums.count(), 70'000);
  EXPECT_EQ(sums.SumText(), "34,965,000");
  EXPECT_EQ(sums.greatest(), 999);
}

// A sheet of two columns of numbers with formats.
SelectionSums FormattedSums(std::pair<double, std::string> one, std::pair<double, std::string> other) {
  sheet::GridSheet sheet;
  std::vector<columns::Column> columns;
  sheet.SetCols(3);
  for (const double number : {one.first, other.first}) {
    columns::ColumnBuilder numbers;
    numbers.AppendDouble(number);
    numbers.AppendDouble(2 * number);
    columns.push_back(numbers.Finish());
  }
  sheet.LoadColumns(std::move(columns), 1);
  for (const int column : {1, 2}) sheet.SetColDataType(column, platform::DataType::kDouble);
  sheet.SetColFormat(1, one.second);
  sheet.SetColFormat(2, other.second);
  return SelectionSums::Of(sheet, {{0, 0}, {sheet.Rows() - 1, 2}});
}

TEST(SelectionSums, NumbersHaveTheDecimalsOfTheirColumn) {
  const SelectionSums money = FormattedSums({1234.5, "#,##0.00"}, {2, "#,##0.00"});
  EXPECT_EQ(money.SumText(), "3,709.50");
  EXPECT_EQ(money.LeastText(), "2.00");
  EXPECT_EQ(money.GreatestText(), "2,469.00");
  EXPECT_EQ(money.AverageText(), "927.375") << "a quotient may have more";
  const SelectionSums pieces = FormattedSums({1, "0"}, {4, "#,##0"});
  EXPECT_EQ(pieces.SumText() + " " + pieces.AverageText(), "15 3.75");
  EXPECT_EQ(FormattedSums({0.126, "0.00"}, {1, ""}).LeastText(), "0.126") << "a column without a format has up to four";
}

TEST(SelectionSums, NumbersOfSeveralColumnsHaveTheDecimalsOfTheOneThatShowsMost) {
  const SelectionSums both = FormattedSums({0.5, "0.000"}, {10, "0"});
  EXPECT_EQ(both.SumText(), "31.500");
  EXPECT_EQ(both.GreatestText(), "20.000");
  EXPECT_EQ(FormattedSums({0.5, "0.0##"}, {0.125, "0.00"}).LeastText(), "0.125");
  EXPECT_EQ(FormattedSums({0.5, "0%"}, {10, "0"}).SumText(), "31.5") << "a share is shown as another number";
}

TEST(SelectionSums, NumbersAreToldWithUpToFourDecimalsWithoutAFormat) {
  const auto least = [](double number) {
    columns::ColumnBuilder numbers;
    numbers.AppendDouble(number);
    return ColumnSums(std::move(numbers)).LeastText();
  };
  EXPECT_EQ(least(1234.5), "1,234.5");
  EXPECT_EQ(least(-0.33333), "-0.3333");
  EXPECT_EQ(least(123456789.25), "123,456,789.25");
}

}  // namespace
}  // namespace stockbook::app
