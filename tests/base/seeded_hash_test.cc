// SPDX-License-Identifier: MIT
#include "stockbook/base/seeded_hash.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <string>

#include "support/colliding_texts.h"

namespace stockbook::base {
namespace {

constexpr size_t kMany = 20000;

// How many different places of a table of 65,536 the keys take.
template <typename Keys>
size_t PlacesOf(const Keys& keys) {
  const SeededHash hash;
  std::set<uint64_t> places;
  for (const auto& key : keys) places.insert(hash(key) & 0xFFFF);
  return places.size();
}

TEST(SeededHash, AgreesOnEqualTextsAndNumbersThroughoutTheProcess) {
  const SeededHash one;
  const SeededHash other;
  for (const size_t length : {0U, 1U, 3U, 4U, 7U, 8U, 15U, 16U, 17U, 33U, 1000U}) {
    const std::string text(length, 'x');
    EXPECT_EQ(one(std::string(text)), other(text)) << length;
    if (length > 0) {
      std::string changed = text;
      changed.back() = 'y';
      EXPECT_NE(one(changed), one(text)) << length;
      changed = text;
      changed.front() = 'y';
      EXPECT_NE(one(changed), one(text)) << length;
    }
  }
  EXPECT_EQ(one(uint64_t{7}), other(uint64_t{7}));
}

// For this process and its children; "" takes the variable away.
void SetVariable(const char* name, const std::string& text) {
#ifdef _WIN32
  _putenv_s(name, text.c_str());
#else
  text.empty() ? unsetenv(name) : setenv(name, text.c_str(), 1);
#endif
}

// The child that the assertion starts begins anew, with a seed of its own.
TEST(SeededHash, DiffersFromProcessToProcess) {
  constexpr const char* kName = "STOCKBOOK_TESTS_HASH";
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const std::string hashes = std::to_string(SeededHash()("text")) + " " + std::to_string(SeededHash()(uint64_t{7}));
  if (std::getenv(kName) == nullptr) SetVariable(kName, hashes);
  EXPECT_EXIT(std::exit(hashes == std::getenv(kName) ? 1 : 0), ::testing::ExitedWithCode(0), "");
  SetVariable(kName, "");
}

TEST(SeededHash, TellsZerosOfDifferentLengthsApart) {
  std::set<uint64_t> hashes;
  for (size_t length = 0; length < 100; ++length) hashes.insert(SeededHash()(std::string(length, '\0')));
  EXPECT_EQ(hashes.size(), 100U);
}

TEST(SeededHash, SpreadsKeysThatCollideUnderAFixedMultiplier) {
  constexpr uint64_t kInverse = 0xF1DE83E19937733DU;  // of 0x9E3779B97F4A7C15 modulo 2^64
  static_assert(kInverse * 0x9E3779B97F4A7C15U == 1);
  std::set<uint64_t> keys;
  for (uint64_t low = 0; low < kMany; ++low) keys.insert(low * kInverse);
  ASSERT_EQ(keys.size(), kMany);
  EXPECT_GT(PlacesOf(keys), kMany / 2);
}

TEST(SeededHash, SpreadsTextsThatCollideUnderAHashWithAFixedSeed) {
  std::set<std::string> texts;
  for (uint64_t word = 1; word <= kMany; ++word) texts.insert(testing::CollidingText(word));
  ASSERT_EQ(texts.size(), kMany);
#if defined(__GLIBCXX__) && __SIZEOF_SIZE_T__ == 8
  std::set<size_t> fixed;
  for (const std::string& text : texts) fixed.insert(std::hash<std::string>()(text));
  EXPECT_EQ(fixed.size(), 1U);
#endif
  EXPECT_GT(PlacesOf(texts), kMany / 2);
}

}  // namespace
}  // namespace stockbook::base
