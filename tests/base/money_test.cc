// SPDX-License-Identifier: MIT
#include "stockbook/base/money.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace stockbook::base {
namespace {

std::string RoundTrip(std::string_view text) {
  const auto money = Money::Parse(text);
  return money ? money->Text() : "nothing";
}

TEST(Money, ReadsAndWritesDecimalsWithoutTrailingZeros) {
  EXPECT_EQ(RoundTrip("0"), "0");
  EXPECT_EQ(RoundTrip("12.50"), "12.5");
  EXPECT_EQ(RoundTrip("-0.0001"), "-0.0001");
  EXPECT_EQ(RoundTrip(" +7. "), "7");
  EXPECT_EQ(RoundTrip(".25"), "0.25");
  EXPECT_EQ(RoundTrip("1.2e3"), "1200");
  EXPECT_EQ(RoundTrip("12e-2"), "0.12");
  EXPECT_EQ(RoundTrip("-0"), "0");
}

TEST(Money, RefusesWhatIsNoNumber) {
  for (const char* text :
       {"", " ", "-", ".", "1,", ",1", "1,,000", "1.0,0", "12a", "1e", "1e+-2", "--1", "NaN", "0x10", "1 2"}) {
    EXPECT_EQ(RoundTrip(text), "nothing") << text;
  }
}

TEST(Money, ReadsGroupingCommasAsNumbersDo) {
  EXPECT_EQ(RoundTrip("1,234.50"), "1234.5");
  EXPECT_EQ(RoundTrip(" -922,337,203,685,477.5808 "), "-922337203685477.5808");
  EXPECT_EQ(RoundTrip("1,2,3"), "123");
  EXPECT_EQ(RoundTrip("1,000.00015e1"), "10000.0015");
  EXPECT_EQ(RoundTrip("0,000,000,000,000,000,000,001"), "1");
  EXPECT_EQ(RoundTrip("922,337,203,685,477.5808"), "nothing");
}

TEST(Money, RoundsHalfToEvenOnTheDecimalDigits) {
  EXPECT_EQ(RoundTrip("0.00005"), "0");
  EXPECT_EQ(RoundTrip("0.00015"), "0.0002");
  EXPECT_EQ(RoundTrip("0.00025"), "0.0002");
  EXPECT_EQ(RoundTrip("0.000250000001"), "0.0003");
  EXPECT_EQ(RoundTrip("-0.00015"), "-0.0002");
  EXPECT_EQ(RoundTrip("0.00004999999999999"), "0");
  EXPECT_EQ(RoundTrip("9e-5"), "0.0001");
  EXPECT_EQ(RoundTrip("5e-6"), "0");
  EXPECT_EQ(Money::FromDouble(0.00015).units(), 2);
  EXPECT_EQ(Money::FromDouble(2.675).Text(), "2.675");
  EXPECT_EQ(Money::FromDouble(1e-300).units(), 0);
}

TEST(Money, HoldsItsLimitsAndNothingBeyond) {
  EXPECT_EQ(RoundTrip("922337203685477.5807"), "922337203685477.5807");
  EXPECT_EQ(RoundTrip("-922337203685477.5808"), "-922337203685477.5808");
  EXPECT_EQ(RoundTrip("922337203685477.5808"), "nothing");
  EXPECT_EQ(RoundTrip("922337203685477.58075"), "nothing");
  EXPECT_EQ(RoundTrip("-922337203685477.58085"), "-922337203685477.5808");
  EXPECT_EQ(RoundTrip("99999999999999999999999"), "nothing");
  EXPECT_EQ(RoundTrip("1e999999"), "nothing");
  EXPECT_EQ(RoundTrip("0e99999"), "0");
  EXPECT_THROW(Money::FromDouble(1e15), ArithmeticError);
  EXPECT_THROW(Money::FromDouble(std::numeric_limits<double>::quiet_NaN()), ArithmeticError);
  EXPECT_THROW(Money::FromInteger(922337203685478), ArithmeticError);
}

TEST(Money, NeverWrapsWhenItOverflows) {
  const Money largest = Money::FromUnits(INT64_MAX);
  const Money smallest = Money::FromUnits(INT64_MIN);
  EXPECT_THROW(largest + Money::FromUnits(1), ArithmeticError);
  EXPECT_THROW(smallest - Money::FromUnits(1), ArithmeticError);
  EXPECT_THROW(-smallest, ArithmeticError);
  EXPECT_EQ((largest + smallest).units(), -1);
}

TEST(Money, WritesEveryAmountSoThatItReadsBack) {
  std::mt19937_64 random(3);
  for (int round = 0; round < 100000; ++round) {
    const Money money = Money::FromUnits(static_cast<int64_t>(random()) >> (random() % 64));
    ASSERT_EQ(Money::Parse(money.Text()), money) << money.units();
  }
}

}  // namespace
}  // namespace stockbook::base
