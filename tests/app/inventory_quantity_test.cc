// SPDX-License-Identifier: MIT
#include "stockbook/inventory/inventory_quantity.h"

#include <gtest/gtest.h>

#include <limits>

#include "stockbook/import/import_decimal.h"

namespace stockbook::app {
namespace {

std::string AmountText(std::string_view quantity, std::string_view price) {
  return AmountOf(QuantityOf(*ParseDecimal(quantity)).value(), *ParseDecimal(price)).Text();
}

TEST(InventoryQuantity, MultipliesExactlyAndRoundsHalvesToEven) {
  EXPECT_EQ(AmountText("6", "2.55"), "15.3");
  EXPECT_EQ(AmountText("0.5", "0.0001"), "0");
  EXPECT_EQ(AmountText("1.5", "0.0001"), "0.0002");
  EXPECT_EQ(AmountText("2.5", "0.0001"), "0.0002");
  EXPECT_EQ(AmountText("2.500001", "0.0001"), "0.0003");
  EXPECT_EQ(AmountText("1.5", "-0.0001"), "-0.0002");
  EXPECT_EQ(AmountText("3", "0.33335"), "1");
  EXPECT_EQ(AmountText("1.005", "100"), "100.5");
}

TEST(InventoryQuantity, AddsTenthsWithoutRest) {
  const Quantity tenth = *QuantityOf(*ParseDecimal("0.1"));
  Quantity sum;
  for (int count = 0; count < 10; ++count) sum += tenth;
  EXPECT_EQ(sum.ToDouble(), 1.0);
  EXPECT_EQ((tenth + tenth + tenth).ToDouble(), 0.3);
}

TEST(InventoryQuantity, RefusesSumsAndAmountsBeyondItsRange) {
  const Quantity most = Quantity::FromMillionths(std::numeric_limits<int64_t>::max());
  EXPECT_THROW(most + Quantity::FromMillionths(1), base::ArithmeticError);
  EXPECT_THROW(-most - Quantity::FromMillionths(2), base::ArithmeticError);
  EXPECT_THROW(AmountOf(Quantity::Whole(999'999'999), {999'999'999'999, 0}), base::ArithmeticError);
}

TEST(InventoryQuantity, DividesAmountsIntoUnitPrices) {
  EXPECT_EQ(UnitPriceOf(*base::Money::Parse("10"), Quantity::Whole(3)).Text(), "3.3333");
  EXPECT_EQ(UnitPriceOf(*base::Money::Parse("-10"), Quantity::Whole(-4)).Text(), "2.5");
  EXPECT_TRUE(UnitPriceOf(*base::Money::Parse("10"), Quantity()).IsZero());
}

TEST(ImportDecimal, ReadsPlainDecimalsExactly) {
  const auto check = [](std::string_view text, int64_t digits, int scale) {
    const auto decimal = ParseDecimal(text);
    ASSERT_TRUE(decimal) << text;
    EXPECT_EQ(decimal->digits, digits) << text;
    EXPECT_EQ(decimal->scale, scale) << text;
  };
  check("12", 12, 0);
  check(" -0012.50 ", -125, 1);
  check("+.5", 5, 1);
  check("7.", 7, 0);
  check("0", 0, 0);
  check("-0.000", 0, 0);
  check("1.5e3", 1500, 0);
  check("25E-4", 25, 4);
  check("123456789012345", 123456789012345, 0);
  check("0.000000000000001", 1, 15);
}

TEST(ImportDecimal, RefusesWhatIsNoNumberOrTooLong) {
  for (const std::string_view text : {"",
                                      " ",
                                      "-",
                                      ".",
                                      "abc",
                                      "1,5",
                                      "1,234.5",
                                      "1e",
                                      "1e+",
                                      "1e-",
                                      "1e999999",
                                      "--1",
                                      "+-1",
                                      "1.2.3",
                                      "0x10",
                                      "nan",
                                      "inf",
                                      "1 2",
                                      "1234567890123456",
                                      "0.0000000000000001",
                                      "1e15",
                                      "\xEF\xBC\x91"}) {
    EXPECT_FALSE(ParseDecimal(text)) << text;
  }
}

TEST(ImportDecimal, LimitsQuantitiesToSixDecimalsAndNineDigits) {
  EXPECT_EQ(QuantityOf(*ParseDecimal("999999999"))->millionths(), 999'999'999'000'000);
  EXPECT_EQ(QuantityOf(*ParseDecimal("-0.000001"))->millionths(), -1);
  EXPECT_FALSE(QuantityOf(*ParseDecimal("1000000000")));
  EXPECT_FALSE(QuantityOf(*ParseDecimal("999999999.000001")));
  EXPECT_FALSE(QuantityOf(*ParseDecimal("-999999999999999")));
  EXPECT_FALSE(QuantityOf(*ParseDecimal("0.0000001")));
}

}  // namespace
}  // namespace stockbook::app
