// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace stockbook::base {

// Both halves of the 128 bits of left * right, one upon the other: low ^ high. From products of 32 bits, for compilers
// that have no wider integer than 64 bits.
constexpr uint64_t FoldedProductByHalves(uint64_t left, uint64_t right) {
  constexpr uint64_t kLow = 0xFFFFFFFF;
  const uint64_t low = (left & kLow) * (right & kLow);
  const uint64_t cross = (left >> 32) * (right & kLow) + (low >> 32);
  const uint64_t other = (left & kLow) * (right >> 32) + (cross & kLow);
  const uint64_t high = (left >> 32) * (right >> 32) + (cross >> 32) + (other >> 32);
  return (other << 32 | (low & kLow)) ^ high;
}

// The same, in one multiplication where the machine has it.
constexpr uint64_t FoldedProduct(uint64_t left, uint64_t right) {
#ifdef __SIZEOF_INT128__
  __extension__ using WideUnsigned = unsigned __int128;
  const auto product = static_cast<WideUnsigned>(left) * right;
  return static_cast<uint64_t>(product) ^ static_cast<uint64_t>(product >> 64);
#else
  return FoldedProductByHalves(left, right);
#endif
}

}  // namespace stockbook::base
