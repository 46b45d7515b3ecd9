// SPDX-License-Identifier: MIT
#include "columns/text_pool.h"

#include <gtest/gtest.h>

#include "support/colliding_texts.h"

namespace stockbook::columns {
namespace {

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
