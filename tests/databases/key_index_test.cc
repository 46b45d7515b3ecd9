// SPDX-License-Identifier: MIT
#include "databases/sqlite/key_index.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace stockbook::databases {
namespace {

constexpr uint64_t kMany = 2'000'000;

// A key that collided with all of its kind when keys were hashed by a multiplier that everybody knows.
int64_t CollidingKey(uint64_t number) {
  constexpr uint64_t kInverse = 0xF1DE83E19937733DU;
  static_assert(kInverse * 0x9E3779B97F4A7C15U == 1);
  return static_cast<int64_t>(((number & 0xFFFFF) | number >> 20 << 44) * kInverse);
}

// One after another, they would take an hour.
TEST(KeyIndex, FindsKeysThatWereChosenToCollide) {
  KeyIndex index(INT64_MIN, INT64_MAX, kMany);
  for (uint64_t number = 0; number < kMany; ++number) ASSERT_EQ(index.Add(CollidingKey(number)), number);
  EXPECT_EQ(index.Add(CollidingKey(7)), 7U);
  EXPECT_EQ(index.Find(CollidingKey(kMany - 1)), kMany - 1);
  EXPECT_EQ(index.Find(CollidingKey(kMany)), KeyIndex::kNone);
}

}  // namespace
}  // namespace stockbook::databases
