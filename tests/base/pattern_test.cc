// SPDX-License-Identifier: MIT
#include "base/pattern.h"

#include <gtest/gtest.h>

#include <array>

#include "base/date_pattern.h"
#include "base/digits.h"
#include "base/number_pattern.h"
#include "base/wide_integer.h"

namespace stockbook::base {
namespace {

// Each piece as its sign, or its text in brackets.
std::string Shape(std::string_view pattern) {
  std::string shape;
  for (const PatternPiece& piece : ReadPattern(pattern))
    shape += piece.sign != 0 ? std::string(1, piece.sign) : "[" + piece.text + "]";
  return shape;
}

std::string DateShape(std::string_view pattern, DateLetters letters) {
  std::string shape;
  for (const DatePiece& piece : DatePieces(ReadPattern(pattern), letters)) {
    constexpr std::string_view kFields = "tymdhisp";
    shape += piece.text + kFields[static_cast<size_t>(piece.field)];
    if (piece.width > 0) shape += std::to_string(piece.width);
  }
  return shape;
}

TEST(Pattern, ResolvesQuotesAndBackslashes) {
  EXPECT_EQ(Shape("#,##0.00"), "#,##0.00");
  EXPECT_EQ(Shape("0\"y;m\"年\\0\\月"), "0[y;m][年][0][月]");
  EXPECT_EQ(Shape("0\"open"), "0[open]");
  EXPECT_EQ(Shape("\"\"\\"), "[]\\");
}

TEST(NumberPattern, CountsPlacesCommasAndPercentSigns) {
  const auto section = NumberSections(ReadPattern(",#,##0,.0#,%"))[0];
  EXPECT_EQ(section.whole_places, 4);
  EXPECT_EQ(section.decimals, 2);
  EXPECT_EQ(section.grouping_commas, 1);
  EXPECT_EQ(section.other_commas, 1);
  EXPECT_EQ(section.percent_signs, 1);
  EXPECT_EQ(section.Whole().size(), 7U);
  EXPECT_EQ(section.Fraction().size(), 4U);
}

TEST(NumberPattern, PartsSectionsAtSemicolonsOutsideOfQuotes) {
  const auto sections = NumberSections(ReadPattern("0;\"a;b\";"));
  ASSERT_EQ(sections.size(), 3U);
  EXPECT_EQ(sections[1].pieces.size(), 1U);
  EXPECT_TRUE(sections[2].pieces.empty());
  EXPECT_FALSE(sections[0].HasPoint());
  EXPECT_TRUE(sections[0].Fraction().empty());
}

TEST(DatePattern, GathersRunsOfLettersInEitherCase) {
  EXPECT_EQ(DateShape("yyYY年M-dd", DateLetters::kDisplay), "y4年tm1-td2");
  EXPECT_EQ(DateShape("h:nn am/pm", DateLetters::kDisplay), "h1:tntnt tampmp");
  EXPECT_EQ(DateShape("h:nn am", DateLetters::kDesktop), "h1:ti2 tatm1");
}

TEST(DatePattern, HasLettersAndNoDigits) {
  EXPECT_TRUE(IsDatePattern(ReadPattern("mm"), DateLetters::kDisplay));
  EXPECT_FALSE(IsDatePattern(ReadPattern("0 d"), DateLetters::kDisplay));
  EXPECT_FALSE(IsDatePattern(ReadPattern("\"d\""), DateLetters::kDisplay));
  EXPECT_FALSE(IsDatePattern(ReadPattern("n"), DateLetters::kDisplay));
  EXPECT_TRUE(IsDatePattern(ReadPattern("n"), DateLetters::kDesktop));
}

TEST(Digits, ArePaddedWithZeros) {
  EXPECT_EQ(ZeroPadded(7, 3), "007");
  EXPECT_EQ(ZeroPadded(1234, 3), "1234");
  EXPECT_EQ(kPowersOfTen.back(), 1'000'000'000'000'000'000U);
}

TEST(WideInteger, DividesHalfToEven) {
  const std::array<std::array<int, 3>, 7> cases = {
      {{5, 10, 0}, {15, 10, 2}, {25, 10, 2}, {26, 10, 3}, {-15, 10, -2}, {-25, 10, -2}, {24, 10, 2}}};
  for (const auto& [numerator, denominator, quotient] : cases)
    EXPECT_TRUE(DivideHalfToEven(numerator, denominator) == quotient) << numerator;
  EXPECT_TRUE(WidePowerOfTen(38) / WidePowerOfTen(37) == 10);
}

}  // namespace
}  // namespace stockbook::base
