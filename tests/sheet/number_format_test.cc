// SPDX-License-Identifier: MIT
#include "sheet/format/number_format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "base/number.h"
#include "sheet/format/cell_format.h"
#include "stockbook/base/money.h"

namespace stockbook::sheet {
namespace {

using base::Decimal;

std::string Shown(std::string_view format, double number) {
  return NumberFormat::Parse(format).Format(*Decimal::FromDouble(number));
}
std::string Shown(std::string_view format, std::string_view number) {
  return NumberFormat::Parse(format).Format(*Decimal::Parse(number));
}
std::string MoneyShown(std::string_view format, int64_t units) {
  return NumberFormat::Parse(format).Format(Decimal::FromScaled(units, 4));
}

TEST(NumberFormat, GroupsThousandsAndFixesDecimals) {
  EXPECT_EQ(Shown("#,##0.00", 0), "0.00");
  EXPECT_EQ(Shown("#,##0.00", 1234567.891), "1,234,567.89");
  EXPECT_EQ(Shown("#,##0.00", -1234.5), "-1,234.50");
  EXPECT_EQ(Shown("#,##0.00", 999), "999.00");
  EXPECT_EQ(Shown("#,##0", 1000), "1,000");
  EXPECT_EQ(Shown("#,##0.00", 0.5), "0.50");
}

TEST(NumberFormat, RoundsHalfAwayFromZeroOnTheDecimalDigits) {
  EXPECT_EQ(Shown("0.00", 1.005), "1.01");
  EXPECT_EQ(Shown("0.00", 2.675), "2.68");
  EXPECT_EQ(Shown("0.00", -1.005), "-1.01");
  EXPECT_EQ(Shown("0.00", 0.125), "0.13");
  EXPECT_EQ(Shown("0", 0.5), "1");
  EXPECT_EQ(Shown("0", 1.5), "2");
  EXPECT_EQ(Shown("0", 2.5), "3");
  EXPECT_EQ(Shown("0", 0.49999), "0");
  EXPECT_EQ(Shown("0.00", 9.995), "10.00");
  EXPECT_EQ(Shown("#,##0.00", 999999.995), "1,000,000.00");
  EXPECT_EQ(Shown("0.000", 0.0005), "0.001");
  EXPECT_EQ(Shown("0.00", 0.1 + 0.2), "0.30");
}

TEST(NumberFormat, ShowsMoneyBeyondTheReachOfDoublesExactly) {
  EXPECT_EQ(MoneyShown("#,##0.00", INT64_MAX), "922,337,203,685,477.58");
  EXPECT_EQ(MoneyShown("#,##0.0000", INT64_MAX), "922,337,203,685,477.5807");
  EXPECT_EQ(MoneyShown("#,##0.0000", INT64_MIN), "-922,337,203,685,477.5808");
  EXPECT_EQ(MoneyShown("0.00", 10050), "1.01");
  EXPECT_EQ(MoneyShown("0.00", -10050), "-1.01");
  EXPECT_EQ(MoneyShown("0.00", 49), "0.00");
  EXPECT_EQ(MoneyShown("0.00", 50), "0.01");
}

TEST(NumberFormat, ShowsLongDecimalTextsDigitForDigit) {
  EXPECT_EQ(Shown("#,##0.00", "12345678901234567890.125"), "12,345,678,901,234,567,890.13");
  EXPECT_EQ(Shown("0.00", "1,234.5"), "1234.50");
  EXPECT_EQ(Shown("0.00", " 7 "), "7.00");
  EXPECT_EQ(Shown("0.00", "1.5e3"), "1500.00");
  EXPECT_EQ(Shown("0.0000", "1e-3"), "0.0010");
  EXPECT_EQ(Shown("0", "1E+20"), "100000000000000000000");
}

TEST(NumberFormat, ShowsPercentWithoutADouble) {
  EXPECT_EQ(Shown("#0.00%", 0.17), "17.00%");
  EXPECT_EQ(Shown("#0.00%", 0.12345), "12.35%");
  EXPECT_EQ(Shown("#0.00%", 0.00005), "0.01%");
  EXPECT_EQ(Shown("0%", 1), "100%");
}

TEST(NumberFormat, ShowsOptionalDigitsOnlyWhereThereAreSome) {
  EXPECT_EQ(Shown("0.####", 12.5), "12.5");
  EXPECT_EQ(Shown("0.####", 12), "12");
  EXPECT_EQ(Shown("0.####", 0.00004), "0");
  EXPECT_EQ(Shown("0.0###", 3), "3.0");
  EXPECT_EQ(Shown("#.00", 0.5), ".50");
  EXPECT_EQ(Shown(".00", 12.5), "12.50");
  EXPECT_EQ(Shown("#", 0), "");
  EXPECT_EQ(Shown("000", 7), "007");
  EXPECT_EQ(Shown("000", 12345), "12345");
  EXPECT_EQ(Shown("0,000", 7), "0,007");
}

TEST(NumberFormat, KeepsLiteralTexts) {
  EXPECT_EQ(Shown("\"共 \"0.0\" 件\"", 2.25), "共 2.3 件");
  EXPECT_EQ(Shown("0.00元", 2), "2.00元");
  EXPECT_EQ(Shown("¥#,##0.00", -1500), "-¥1,500.00");
  EXPECT_EQ(Shown("\\#0", 5), "#5");
  EXPECT_EQ(Shown("000-0000", 5551234), "555-1234");
  EXPECT_EQ(Shown("\"none\"", 5), "none");
}

TEST(NumberFormat, KeepsALastCharacterThatIsZeroInTheQuickWayToo) {
  constexpr std::string_view kFormat("0\0", 2);
  std::string shown;
  EXPECT_TRUE(CellFormat(kFormat).Append(platform::DataType::kDouble, base::Value(5.0), shown));
  EXPECT_EQ(shown, std::string("5\0", 2));
  EXPECT_EQ(shown, Shown(kFormat, 5));
}

TEST(NumberFormat, ChoosesTheSectionOfTheSign) {
  EXPECT_EQ(Shown("0.00;(0.00);\"-\"", 1.5), "1.50");
  EXPECT_EQ(Shown("0.00;(0.00);\"-\"", -1.5), "(1.50)");
  EXPECT_EQ(Shown("0.00;(0.00);\"-\"", 0), "-");
  EXPECT_EQ(Shown("0.00;(0.00);\"-\"", -0.001), "-");
  EXPECT_EQ(Shown("0.00;(0.00)", -0.001), "0.00");
  EXPECT_EQ(Shown("0.00;;\"zero\"", -2), "-2.00");
  EXPECT_EQ(Shown("0.00", -0.001), "0.00");
  EXPECT_EQ(Shown("\";\"0", 3), ";3");
}

TEST(NumberFormat, DividesByAThousandForEachCommaAfterTheLastDigit) {
  EXPECT_EQ(Shown("#,##0,", 1234567), "1,235");
  EXPECT_EQ(Shown("0,,.0", 12345678), "12.3");
}

TEST(NumberFormat, SurvivesAnyFormatText) {
  std::mt19937 random(7);
  const std::string_view signs = "0#,.%;\"\\a-年 E";
  for (int round = 0; round < 20000; ++round) {
    std::string format;
    for (auto length = random() % 12; length > 0; --length) format += signs[random() % signs.size()];
    const NumberFormat parsed = NumberFormat::Parse(format);
    EXPECT_LT(parsed.Format(*Decimal::Parse("-1234567890123456789012345.678")).size(), 200U) << format;
    EXPECT_LT(parsed.Format(Decimal()).size(), 200U) << format;
  }
}

TEST(Decimal, AgreesWithMoneyTextForRandomUnits) {
  std::mt19937_64 random(11);
  for (int round = 0; round < 20000; ++round) {
    const auto units = static_cast<int64_t>(random()) >> (random() % 60);
    const std::string shown = NumberFormat::Parse("0.####").Format(Decimal::FromScaled(units, 4));
    EXPECT_EQ(shown, base::Money::FromUnits(units).Text());
  }
}

TEST(Decimal, RoundsAsIntegerArithmeticDoes) {
  std::mt19937_64 random(12);
  for (int round = 0; round < 20000; ++round) {
    const auto units = static_cast<int64_t>(random() % 2000000) - 1000000;
    const int64_t size = units < 0 ? -units : units;
    const int64_t cents = (size + 50) / 100 * (units < 0 ? -1 : 1);
    const std::string expected = NumberFormat::Parse("0.00").Format(Decimal::FromScaled(cents, 2));
    EXPECT_EQ(MoneyShown("0.00", units), expected) << units;
    EXPECT_EQ(Shown("0.00", static_cast<double>(units) / 10000), expected) << units;
  }
}

TEST(Decimal, TakesShortDecimalsApartAsTheirTextsAre) {
  std::mt19937_64 random(13);
  for (int round = 0; round < 50000; ++round) {
    // Short decimals, their neighbours, and any other doubles.
    double number = static_cast<double>(static_cast<int64_t>(random() >> (random() % 64))) /
                    std::pow(10.0, static_cast<double>(random() % 6));
    if (round % 3 == 0) number = std::nextafter(number, 1e300);
    const auto decimal = Decimal::FromDouble(number);
    ASSERT_TRUE(decimal);
    const std::string text = base::NumberText(number);
    if (text.find('E') == std::string::npos) {
      EXPECT_EQ(NumberFormat::Parse("0.###############").Format(*decimal), text);
    }
  }
}

}  // namespace
}  // namespace stockbook::sheet
