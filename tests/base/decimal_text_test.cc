// SPDX-License-Identifier: MIT
#include "base/decimal_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "base/decimal.h"
#include "base/number.h"

namespace stockbook::base {
namespace {

std::string TakenApart(std::string_view text, Grouping grouping) {
  const auto parts = ReadDecimal(text, grouping);
  if (!parts) return "nothing";
  return (parts->negative ? "-" : "+") + std::string(parts->whole) + "." + std::string(parts->fraction) + "e" +
         std::to_string(parts->exponent);
}

TEST(DecimalText, IsTakenApartAsItIsSpelled) {
  EXPECT_EQ(TakenApart("0", Grouping::kNone), "+0.e0");
  EXPECT_EQ(TakenApart("  -012.50 ", Grouping::kNone), "-012.50e0");
  EXPECT_EQ(TakenApart("+7.", Grouping::kNone), "+7.e0");
  EXPECT_EQ(TakenApart(".25", Grouping::kNone), "+.25e0");
  EXPECT_EQ(TakenApart("1E+05", Grouping::kNone), "+1.e5");
  EXPECT_EQ(TakenApart("1.5e-3", Grouping::kNone), "+1.5e-3");
}

TEST(DecimalText, IsNothingElse) {
  for (const char* text :
       {"", " ", "-", ".", "e5", "1e", "1e+", "1e+-2", "--1", "+-1", "1 2", "0x10", "NaN", "1\n", "1.2.3"}) {
    EXPECT_EQ(TakenApart(text, Grouping::kCommas), "nothing") << text;
  }
}

TEST(DecimalText, HasCommasOnlyBetweenDigitsOfTheWholePartAndWhereTheyAreAsked) {
  EXPECT_EQ(TakenApart("1,234,5.6", Grouping::kCommas), "+1,234,5.6e0");
  EXPECT_EQ(TakenApart("1,234", Grouping::kNone), "nothing");
  for (const char* text : {",1", "1,", "1,,2", "1,.5", "1.2,3", "1e1,0"})
    EXPECT_EQ(TakenApart(text, Grouping::kCommas), "nothing") << text;
}

TEST(DecimalText, CountsExponentsUpToALimit) {
  EXPECT_EQ(TakenApart("1e9999999999", Grouping::kNone), "+1.e9999999999");
  EXPECT_EQ(TakenApart("1e-99999999999999999999999", Grouping::kNone), "+1.e-10000000000");
}

TEST(Decimal, HasNothingForWhatIsNoNumber) {
  EXPECT_FALSE(Decimal::FromDouble(std::numeric_limits<double>::quiet_NaN()));
  EXPECT_FALSE(Decimal::FromDouble(std::numeric_limits<double>::infinity()));
  EXPECT_FALSE(Decimal::Parse("-"));
  EXPECT_FALSE(Decimal::Parse(""));
  EXPECT_FALSE(Decimal::Parse("1\n2"));
  EXPECT_FALSE(Decimal::Parse("1e400"));
}

TEST(Decimal, ShowsPowersOfTenRoundedHalfAwayFromZero) {
  const Decimal percent = Decimal::Parse("-1,234.56785")->Shown(2, 2);
  EXPECT_EQ(percent.WholeDigits() + "." + percent.FractionDigits(2), "123456.79");
  EXPECT_TRUE(percent.negative);
  EXPECT_FALSE(Decimal::Parse("-0.004")->Shown(0, 2).negative);
}

TEST(ParseNumber, GivesTheNearestDoubleOfShortAndLongTexts) {
  EXPECT_EQ(ParseNumber("1,234.5"), 1234.5);
  EXPECT_EQ(ParseNumber("0.1"), 0.1);
  EXPECT_EQ(ParseNumber("123456789012345e22"), 123456789012345e22);
  EXPECT_EQ(ParseNumber("9007199254740993"), 9007199254740992.0);
  EXPECT_EQ(ParseNumber("1e-400"), std::nullopt);
  EXPECT_EQ(ParseNumber("1e400"), std::nullopt);
}

}  // namespace
}  // namespace stockbook::base
