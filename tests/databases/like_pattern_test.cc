// SPDX-License-Identifier: MIT
#include "databases/dialect/like_pattern.h"

#include <gtest/gtest.h>

#include <string>

#include "stockbook/base/money.h"

namespace stockbook::databases {
namespace {

TEST(LikePattern, TakesAnOpenBracketThatNothingClosesForItself) {
  EXPECT_TRUE(MatchesLike("a[b", "a[b", Wildcards::kDesktop));
  EXPECT_TRUE(MatchesLike("a[]b", "a[]b", Wildcards::kServer));
  EXPECT_FALSE(MatchesLike("ab", "a[b", Wildcards::kDesktop));
  EXPECT_TRUE(MatchesLike("]", "[]]", Wildcards::kDesktop));
}

// Looked for from each bracket again, the end that is not there takes the pattern squared for each character.
TEST(LikePattern, OfThousandsOfOpenBracketsIsReadInOnePass) {
  const std::string brackets(20000, '[');
  for (const auto wildcards : {Wildcards::kDesktop, Wildcards::kServer}) {
    EXPECT_TRUE(MatchesLike(brackets, brackets, wildcards));
    EXPECT_FALSE(MatchesLike(std::string(200000, 'a'), "%" + brackets, wildcards));
    EXPECT_FALSE(MatchesLike(std::string(30000, '['), "%" + brackets.substr(0, 200) + "x", wildcards));
  }
}

TEST(LikePattern, ThatWouldTakeForeverIsRefused) {
  const std::string text(40000, 'a');
  EXPECT_THROW(MatchesLike(text, "%" + text.substr(0, 20000) + "b", Wildcards::kDesktop), base::ArithmeticError);
  EXPECT_THROW(MatchesLike(text, "%" + std::string(20000, '[') + "]b", Wildcards::kServer), base::ArithmeticError);
  EXPECT_TRUE(MatchesLike(text, "%" + text + "%", Wildcards::kDesktop));
}

}  // namespace
}  // namespace stockbook::databases
