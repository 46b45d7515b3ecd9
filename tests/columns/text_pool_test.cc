// SPDX-License-Identifier: MIT
#include "stockbook/columns/text_pool.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/colliding_texts.h"

namespace stockbook::columns {
namespace {

TEST(TextPool, GivesEqualTextsOneCodeAndKeepsLongOnes) {
  TextPool pool;
  const std::string megabyte(size_t{3} << 20, 'x');
  const uint32_t first = pool.Add("螺丝");
  const uint32_t longest = pool.Add(megabyte);
  for (int number = 0; number < 10000; ++number) pool.Add(std::to_string(number));
  EXPECT_EQ(pool.Add("螺丝"), first);
  EXPECT_EQ(pool.Add(megabyte), longest);
  EXPECT_EQ(pool.TextOf(longest), megabyte);
  EXPECT_EQ(pool.Add(""), pool.Add(""));
  EXPECT_NE(pool.Add(""), 0U);
  EXPECT_EQ(pool.TextOf(0), "");
  EXPECT_EQ(pool.TextOf(4000000), "");
}

TEST(TextPool, KeepsTextsOfEveryLength) {
  TextPool pool;
  std::vector<std::string> texts;
  for (size_t length = 0; length < 600; ++length)
    texts.push_back(std::string(length, static_cast<char>('a' + length % 26)));
  for (uint32_t code = 1; code <= texts.size(); ++code) ASSERT_EQ(pool.Add(texts[code - 1]), code);
  for (uint32_t code = 1; code <= texts.size(); ++code) {
    ASSERT_EQ(pool.TextOf(code), texts[code - 1]);
    ASSERT_EQ(pool.Add(texts[code - 1]), code);
  }
}

// The bytes that tell a text's length may be letters.
TEST(TextPool, FindsAPartInTextsAndNotBetweenThem) {
  TextPool pool;
  const std::string before(70, 'x');
  const uint32_t first = pool.Add(before);
  const uint32_t second = pool.Add("B" + std::string(64, 'y'));  // 65 is the letter A
  const uint32_t third = pool.Add(std::string(300, 'z') + "AB");
  pool.Seal();
  std::vector<uint8_t> marks(pool.CodeCount());
  pool.MarkContaining(base::Substring("AB"), 1, marks);
  EXPECT_EQ(marks[first], 0);
  EXPECT_EQ(marks[second], 0);
  EXPECT_EQ(marks[third], 1);
  pool.MarkContaining(base::Substring("By"), 2, marks);
  EXPECT_EQ(marks[second], 2);
}

TEST(TextPool, AddsManyTextsTogetherAsOneByOne) {
  TextPool pool;
  TextPool one_by_one;
  for (size_t first = 0; first < 5000; first += TextPool::kMostAtOnce) {
    std::vector<std::string> made;
    for (size_t text = first; text < first + TextPool::kMostAtOnce; ++text)
      made.push_back("text " + std::to_string(text * 7 % 1000));
    made.back() = made.front();
    const std::vector<std::string_view> texts(made.begin(), made.end());
    std::vector<uint32_t> codes(texts.size());
    pool.AddAll(texts, codes);
    for (size_t at = 0; at < texts.size(); ++at) ASSERT_EQ(codes[at], one_by_one.Add(texts[at])) << texts[at];
  }
  EXPECT_EQ(pool.CodeCount(), one_by_one.CodeCount());
  for (uint32_t code = 0; code < pool.CodeCount(); ++code) ASSERT_EQ(pool.TextOf(code), one_by_one.TextOf(code));
  pool.AddAll({}, {});
}

// One after another, they would take hours.
TEST(TextPool, HoldsTextsThatWereChosenToCollide) {
  constexpr uint32_t kMany = 2'000'000;
  TextPool pool;
  for (uint32_t word = 1; word <= kMany; ++word) ASSERT_EQ(pool.Add(testing::CollidingText(word)), word);
  EXPECT_EQ(pool.Add(testing::CollidingText(7)), 7U);
  EXPECT_EQ(pool.TextOf(kMany), testing::CollidingText(kMany));
}

}  // namespace
}  // namespace stockbook::columns
