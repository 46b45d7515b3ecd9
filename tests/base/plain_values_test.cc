// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/number.h"
#include "base/text.h"
#include "stockbook/base/date.h"
#include "stockbook/base/value.h"

namespace stockbook::base {
namespace {

TEST(NumberText, IsTheShortestOfFifteenDigits) {
  EXPECT_EQ(NumberText(0.1 + 0.2), "0.3");
  EXPECT_EQ(NumberText(-12.5), "-12.5");
  EXPECT_EQ(NumberText(-0.0), "0");
  EXPECT_EQ(NumberText(1.0 / 3.0), "0.333333333333333");
  EXPECT_EQ(NumberText(123456789012345.0), "123456789012345");
  EXPECT_EQ(NumberText(0.0001), "0.0001");
  EXPECT_EQ(NumberText(100.25), "100.25");
}

TEST(NumberText, UsesAnExponentOnlyWherePlainDigitsDoNotFit) {
  EXPECT_EQ(NumberText(1e15), "1E+15");
  EXPECT_EQ(NumberText(1.5e300), "1.5E+300");
  EXPECT_EQ(NumberText(1e-7), "0.0000001");
  EXPECT_EQ(NumberText(1.23456789e-10), "1.23456789E-10");
  EXPECT_EQ(NumberText(std::numeric_limits<double>::infinity()), "");
}

TEST(ParseNumber, ReadsWholeTextsOnly) {
  EXPECT_EQ(ParseNumber(" 1,234.5 "), 1234.5);
  EXPECT_EQ(ParseNumber("+7"), 7);
  EXPECT_EQ(ParseNumber("-.5"), -0.5);
  EXPECT_EQ(ParseNumber("1E+15"), 1e15);
  for (const char* text : {"", "-", "12件", "1,", ",1", "1.5,0", "inf", "nan", "+-1", "1e999", "2005-03-08"}) {
    EXPECT_EQ(ParseNumber(text), std::nullopt) << text;
    EXPECT_EQ(NumericValue(text), 0) << text;
  }
}

TEST(ParseInteger, TakesOneSignAtMost) {
  EXPECT_EQ(ParseInteger(" +12 "), 12);
  EXPECT_EQ(ParseInteger("-12"), -12);
  for (const char* text : {"+-2", "++2", "-+2", "--2", "+", "-", ""})
    EXPECT_EQ(ParseInteger(text), std::nullopt) << text;
}

TEST(SafeDivide, GivesZeroWhereThereIsNoQuotient) {
  EXPECT_EQ(SafeDivide(10, 4), 2.5);
  EXPECT_EQ(SafeDivide(10, 0), 0);
  EXPECT_EQ(SafeDivide(10, -0.0), 0);
  EXPECT_EQ(SafeDivide(1e308, 1e-308), 0);
  EXPECT_EQ(SafeDivide(std::numeric_limits<double>::quiet_NaN(), 1), 0);
  EXPECT_EQ(SafeDivide(1, std::numeric_limits<double>::infinity()), 0);
  EXPECT_EQ(SafeDivide(-10, 4), -2.5);
}

TEST(Date, ReadsIsoTextsAndNothingElse) {
  EXPECT_EQ(Date::Parse("2005-03-08")->Text(), "2005-03-08");
  EXPECT_EQ(Date::Parse("2005-3-8 7:05")->Text(), "2005-03-08 07:05:00");
  EXPECT_EQ(Date::Parse(" 2005/03/08T23:59:59.999 ")->Text(), "2005-03-08 23:59:59");
  EXPECT_EQ(Date::Parse("2004-02-29")->Text(), "2004-02-29");
  for (const char* text : {"", "2005", "2005-13-01", "2005-02-29", "2005-03/08", "05-03-08", "2005-03-08 25:00",
                           "2005-03-08x", "2005-03-08 ", "2005-03-08 7", "0000-00-00"}) {
    if (std::string_view(text) == "2005-03-08 ")
      EXPECT_TRUE(Date::Parse(text).has_value());
    else
      EXPECT_EQ(Date::Parse(text), std::nullopt) << text;
  }
}

TEST(Date, CountsFromTheZeroDateInBothDirections) {
  EXPECT_TRUE(Date().IsZero());
  EXPECT_EQ(Date().Text(), "1899-12-30");
  EXPECT_EQ(Date::Parse("1899-12-31")->days(), 1);
  EXPECT_EQ(Date::Parse("1899-12-29 12:00:00")->days(), -1);
  EXPECT_EQ(Date::Parse("1899-12-29 12:00:00")->Text(), "1899-12-29 12:00:00");
  for (int64_t day = -600000; day < 2900000; day += 997) {
    const Date date = Date::FromSeconds(day * 86400 + 3661);
    ASSERT_EQ(Date::Parse(date.Text()), date);
  }
}

TEST(Text, ReplacesMalformedSequencesAndNul) {
  EXPECT_EQ(CleanUtf8("螺丝 M3"), "螺丝 M3");
  EXPECT_EQ(CleanUtf8(std::string_view("a\0b", 3)),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(CleanUtf8("\xE8\x9E"), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(CleanUtf8("\xC0\x80"), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(CleanUtf8("\xED\xA0\x80").size(), 9U);
  EXPECT_EQ(CleanUtf8("\xF4\x90\x80\x80").size(), 12U);
  EXPECT_TRUE(IsCleanUtf8("\xF0\x9F\x94\xA9"));
  EXPECT_FALSE(IsCleanUtf8("\x80"));
}

TEST(Text, CountsAndCutsByCharacters) {
  EXPECT_EQ(CharacterCount("螺丝M3"), 4U);
  EXPECT_EQ(LeftCharacters("2004年03月", 5), "2004年");
  EXPECT_EQ(RightCharacters("2004年03月", 3), "03月");
  EXPECT_EQ(RightCharacters("月", 9), "月");
  EXPECT_EQ(MidCharacters("螺丝M3", 2, 2), "丝M");
  EXPECT_EQ(MidCharacters("螺丝", 9, 2), "");
}

TEST(Text, TrimsReplacesAndSplits) {
  EXPECT_EQ(TrimBlanks("  a b  "), "a b");
  EXPECT_EQ(TrimBlanks("   "), "");
  EXPECT_EQ(ReplaceAll("a|b|", "|", "\n"), "a\nb\n");
  EXPECT_EQ(Split("|a||", '|'), (std::vector<std::string_view>{"", "a", "", ""}));
  EXPECT_TRUE(EqualsIgnoringCase("TRUE", "true"));
  EXPECT_FALSE(EqualsIgnoringCase("tru", "true"));
}

TEST(Value, ConvertsWhereItCanAndSaysNothingWhereItCannot) {
  EXPECT_EQ(Value().Text(), "");
  EXPECT_EQ(Value(Money::FromUnits(5)).Text(), "0.0005");
  EXPECT_EQ(Value(std::string("12.5")).AsMoney()->units(), 125000);
  EXPECT_EQ(Value(std::string("abc")).AsMoney(), std::nullopt);
  EXPECT_EQ(Value(2.5).AsInteger(), 2);
  EXPECT_EQ(Value(3.5).AsInteger(), 4);
  EXPECT_EQ(Value(1e30).AsInteger(), std::nullopt);
  EXPECT_EQ(Value(std::nan("")).Number(), std::nullopt);
  EXPECT_EQ(Value(1.5).AsDate()->Text(), "1899-12-31 12:00:00");
  EXPECT_EQ(Value(std::string("2005-03-08")).AsDate()->Text(), "2005-03-08");
  EXPECT_EQ(Value(1e18).AsDate(), std::nullopt);
}

}  // namespace
}  // namespace stockbook::base
