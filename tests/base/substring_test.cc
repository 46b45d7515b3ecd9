// SPDX-License-Identifier: MIT
#include "stockbook/base/substring.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace stockbook::base {
namespace {

TEST(Substring, FindsWhereATextFirstStands) {
  EXPECT_EQ(Substring("螺丝").FindIn("六角螺丝螺丝", 0), 6U);
  EXPECT_EQ(Substring("螺丝").FindIn("六角螺丝螺丝", 7), 12U);
  EXPECT_EQ(Substring("螺丝").FindIn("六角螺丝螺丝", 13), Substring::kNone);
  EXPECT_EQ(Substring("a").FindIn("", 0), Substring::kNone);
  EXPECT_EQ(Substring("a").FindIn("a", 99), Substring::kNone);
  EXPECT_EQ(Substring("").FindIn("abc", 2), 2U);
}

TEST(Substring, AgreesWithTheStandardLibraryOnRandomTexts) {
  std::mt19937 random(1);
  const auto text_of = [&](size_t most, unsigned letters) {
    std::string text(random() % (most + 1), 'a');
    for (char& c : text) c = static_cast<char>('a' + random() % letters);
    return text;
  };
  for (int round = 0; round < 50000; ++round) {
    const auto letters = 1 + static_cast<unsigned>(random() % 3);
    const std::string part = text_of(round % 2 == 0 ? 5 : 40, letters);
    const std::string text = text_of(400, letters) + (round % 3 == 0 ? part : "") + text_of(100, letters);
    const size_t from = random() % (text.size() + 2);
    ASSERT_EQ(Substring(part).FindIn(text, from), text.find(part, from)) << part << " / " << text;
  }
}

TEST(Substring, FindsPeriodicTextsInPeriodicOnes) {
  std::string text;
  for (int piece = 0; piece < 20000; ++piece) text += "abaab";
  std::string part = text.substr(3, 30000);
  EXPECT_EQ(Substring(part).FindIn(text, 0), 3U);
  part += "c";
  EXPECT_EQ(Substring(part).FindIn(text, 0), Substring::kNone);
  EXPECT_EQ(Substring(part).FindIn(text + part + text, 0), text.size());
}

}  // namespace
}  // namespace stockbook::base
