// SPDX-License-Identifier: MIT
#include "base/folded_product.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace stockbook::base {
namespace {

TEST(FoldedProduct, IsKnownForTheLargestFactors) {
  // (2^64 - 1)^2 = 2^128 - 2^65 + 1.
  EXPECT_EQ(FoldedProductByHalves(UINT64_MAX, UINT64_MAX), (UINT64_MAX - 1) ^ 1);
  EXPECT_EQ(FoldedProductByHalves(uint64_t{1} << 32, uint64_t{1} << 32), 1U);
  EXPECT_EQ(FoldedProductByHalves(0, UINT64_MAX), 0U);
}

TEST(FoldedProduct, IsTheSameWithAndWithoutWideIntegers) {
  std::mt19937_64 random(7);
  constexpr std::array<uint64_t, 6> kEdges = {0, 1, 0xFFFFFFFF, 0x100000000, UINT64_MAX - 1, UINT64_MAX};
  for (const uint64_t left : kEdges)
    for (const uint64_t right : kEdges) EXPECT_EQ(FoldedProduct(left, right), FoldedProductByHalves(left, right));
  for (int i = 0; i < 10000; ++i) {
    const uint64_t left = random() >> (random() & 63);
    const uint64_t right = random() >> (random() & 63);
    ASSERT_EQ(FoldedProduct(left, right), FoldedProductByHalves(left, right)) << left << " * " << right;
  }
}

}  // namespace
}  // namespace stockbook::base
