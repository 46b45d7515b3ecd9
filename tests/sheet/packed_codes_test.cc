// SPDX-License-Identifier: MIT
#include "sheet/store/packed_codes.h"

#include <gtest/gtest.h>

#include <vector>

namespace stockbook::sheet {
namespace {

TEST(PackedCodes, GiveBackWhatTheyHoldInTheFewestBits) {
  // Every width, and sizes that end inside of a byte, at its end and after it.
  for (const size_t most : {1U, 3U, 15U, 255U}) {
    for (const size_t size : {2U, 7U, 8U, 9U, 1001U}) {
      std::vector<uint8_t> codes(size);
      for (size_t row = 0; row < size; ++row) codes[row] = static_cast<uint8_t>((row * 7 + 1) % (most + 1));
      codes.front() = 0;
      codes.back() = static_cast<uint8_t>(most);
      const PackedCodes packed(codes);
      ASSERT_EQ(packed.size(), size);
      for (size_t row = 0; row < size; ++row) ASSERT_EQ(packed.At(row), codes[row]) << most << " at " << row;
      const size_t bits = most == 1 ? 1 : most == 3 ? 2 : most == 15 ? 4 : 8;
      EXPECT_EQ(packed.MemoryBytes(), (size * bits + 7) / 8);
    }
  }
}

TEST(PackedCodes, NeedNoMemoryWhereAllAreTheSame) {
  const PackedCodes packed(std::vector<uint8_t>(100000, 3));
  EXPECT_EQ(packed.At(99999), 3);
  EXPECT_EQ(packed.MemoryBytes(), 0U);
  EXPECT_EQ(PackedCodes().size(), 0U);
}

}  // namespace
}  // namespace stockbook::sheet
