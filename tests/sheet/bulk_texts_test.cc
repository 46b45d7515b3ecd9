// SPDX-License-Identifier: MIT
// Texts produced in bulk equal those produced one by one.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>
#include <string>

#include "base/decimal.h"
#include "base/number.h"
#include "sheet/columns.h"
#include "sheet/format/number_format.h"
#include "sheet/selection/selection_text.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::sheet {
namespace {

constexpr std::array kFormats = {
    "0", "0.00", "#,##0.00", "#,##0.00##", "0.####",    "#0.00%",         "#,###", "0,000.0", ".00", "00000", "0.0000",
    "#", "0元",  "#,##0",    "0.00;-0.00", "\"合\"0.0", "#,##0.00\"元\"", "0.00,", "0.%",     "#0#", "000#$"};

// Numbers of all sizes: whole, short decimals, halves, sums with the noise of additions, tiny and huge ones.
double SomeNumber(std::mt19937_64& random) {
  const auto below = [&](int64_t most) {
    return static_cast<double>(static_cast<int64_t>(random() % 2'000'000) % most);
  };
  const double size = std::pow(10.0, static_cast<double>(random() % 14));
  switch (random() % 8) {
    case 0:
      return below(100) - 50;
    case 1:
      return below(2'000'000) / 100 - 5000;
    case 2:
      return (below(2'000'000) + 0.5) / 1000;
    case 3:
      return below(1000) * 0.1 + below(1000) * 0.2;
    case 4:
      return std::sqrt(below(2'000'000)) * size;
    case 5:
      return below(2'000'000) / 8 / size;
    case 6:
      return (random() % 2 == 0 ? -1 : 1) * std::ldexp(1.0 + below(1000) / 1000, static_cast<int>(random() % 120) - 60);
    default:
      return 0;
  }
}

TEST(PlainNumber, ShowsWhatTheDigitsOfTheNumberShow) {
  std::mt19937_64 random(7);
  size_t written = 0;
  for (const char* pattern : kFormats) {
    const NumberFormat format = NumberFormat::Parse(pattern);
    if (!format.plain()) continue;
    for (int round = 0; round < 20'000; ++round) {
      const double number = SomeNumber(random);
      std::string text;
      if (!format.plain()->Append(number, text)) continue;
      ++written;
      ASSERT_EQ(text, format.Format(*base::Decimal::FromDouble(number))) << pattern << ' ' << number;
    }
    for (int round = 0; round < 20'000; ++round) {
      const auto units = static_cast<int64_t>(random() >> (random() % 64)) * (random() % 2 == 0 ? 1 : -1);
      const auto decimals = static_cast<int>(random() % 7);
      std::string text;
      if (!format.plain()->Append(units, decimals, text)) continue;
      ++written;
      ASSERT_EQ(text, format.Format(base::Decimal::FromScaled(units, decimals))) << pattern << ' ' << units;
    }
  }
  EXPECT_GT(written, 300'000U);
}

TEST(PlainNumber, ShowsNumbersWithoutAFormatAsTheirDefaultText) {
  std::mt19937_64 random(11);
  size_t written = 0;
  double sum = 0;
  for (int round = 0; round < 200'000; ++round) {
    sum += 0.01 * static_cast<double>(random() % 1000);
    const double number = round % 2 == 0 ? sum : SomeNumber(random);
    std::array<char, PlainNumber::kMostBytes> buffer{};
    char* const end = buffer.data() + buffer.size();
    const char* begin = PlainNumber::WriteDefault(number, end);
    if (begin == nullptr) continue;
    ++written;
    ASSERT_EQ(std::string(begin, static_cast<const char*>(end)), base::NumberText(number)) << round;
  }
  EXPECT_GT(written, 100'000U);
}

// What SelectionText must return, built cell by cell.
std::string CellByCell(const GridSheet& sheet) {
  const platform::CellRange range = sheet.view().selection().Range();
  std::string text;
  for (int row = 0; row < range.row2; row = row == 0 ? range.row1 : row + 1) {
    if (row > 0 && sheet.RowHidden(row)) continue;
    for (int column = range.column1; column < range.column2; ++column) {
      if (sheet.ColHidden(column)) continue;
      text += sheet.DisplayText(row, column);
      if (column + 1 < range.column2) text += '\t';
    }
    if (row + 1 < range.row2) text += "\r\n";
  }
  return text;
}

// A column of each encoding, and one of all mixed.
std::vector<columns::Column> AllKinds(int64_t rows) {
  std::mt19937_64 random(3);
  std::vector<columns::ColumnBuilder> builders(9);
  double sum = 0;
  for (int64_t row = 0; row < rows; ++row) {
    const auto some = static_cast<int64_t>(random() % 1000);
    sum += 0.1 * static_cast<double>(some);
    builders[0].AppendText("单据 " + std::to_string(row));
    builders[1].AppendText(std::to_string(row / 1000));
    some % 3 == 0 ? builders[2].AppendNull() : builders[2].AppendText(std::string(static_cast<size_t>(some % 70), 'x'));
    builders[3].AppendInteger(some - 500);
    builders[4].AppendDouble(static_cast<double>(some) / 100);
    builders[5].AppendDouble(sum);
    some % 5 == 0 ? builders[6].AppendNull() : builders[6].AppendMoney(base::Money::FromUnits((some - 300) * 1234));
    builders[7].AppendDate(base::Date::FromSeconds(row / 7 * 86400));
    builders[8].Append(some % 4 == 0   ? base::Value()
                       : some % 4 == 1 ? base::Value(static_cast<double>(some))
                       : some % 4 == 2 ? base::Value(std::string("混"))
                                       : base::Value(some));
  }
  std::vector<columns::Column> columns;
  for (columns::ColumnBuilder& builder : builders) columns.push_back(builder.Finish());
  return columns;
}

class BulkTexts : public ::testing::TestWithParam<const char*> {};

TEST_P(BulkTexts, CopyEveryKindOfColumnAsItIsShown) {
  constexpr int kRows = 150'000;  // more than two chunks of a column, and enough for several workers
  GridSheet sheet;
  sheet.LoadColumns(AllKinds(kRows), 1);
  for (int column = 0; column < sheet.Cols(); ++column) {
    sheet.SetTextMatrix(0, column, "列" + std::to_string(column));
    if (column >= 4) sheet.SetColFormat(column, GetParam());
    if (column >= 4 && column != 8) sheet.SetColDataType(column, platform::DataType::kDouble);
  }
  sheet.SetColFormat(8, "yyyy年m月d日");
  sheet.SetColDataType(8, platform::DataType::kDate);
  sheet.SetTextMatrix(77, 4, "改 过");
  sheet.SetColHidden(2, true);
  sheet.GroupBy(2, 1, "%s");
  sheet.SetIsCollapsed(sheet.NextSubtotal(5000), true);
  sheet.RemoveItem(333);
  sheet.SetRowHidden(334, true);
  sheet.SelectRange(3, 1, sheet.Rows() - 2, sheet.Cols() - 1);
  EXPECT_TRUE(SelectionText(sheet, sheet.view().selection()) == CellByCell(sheet));
}

INSTANTIATE_TEST_SUITE_P(Formats, BulkTexts, ::testing::Values("", "#,##0.00", "0.####", "#0.00%", "0.00;(0.00)"));

}  // namespace
}  // namespace stockbook::sheet
