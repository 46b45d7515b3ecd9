// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cstring>
#include <string>

namespace stockbook::testing {

// Texts of sixteen bytes, another one for each word, that have all the same hash under libstdc++'s std::hash, a Murmur
// hash with a fixed seed: the second half brings the hash back to the state that the first one has taken it from.
inline std::string CollidingText(uint64_t word) {
  constexpr uint64_t kFactor = 0xC6A4A7935BD1E995U;
  constexpr uint64_t kInverse = 0x5F7A0EA7E59B19BDU;
  static_assert(kFactor * kInverse == 1);
  const auto mixed = [](uint64_t plain) {
    plain *= kFactor;
    return (plain ^ plain >> 47) * kFactor;
  };
  const auto unmixed = [](uint64_t value) {
    value *= kInverse;
    return (value ^ value >> 47) * kInverse;
  };
  const uint64_t state = (0xC70F6907U ^ 16 * kFactor ^ mixed(word)) * kFactor;
  const uint64_t words[2] = {word, unmixed(state ^ 0x1234567U)};
  std::string text(sizeof words, '\0');
  std::memcpy(text.data(), words, sizeof words);
  return text;
}

}  // namespace stockbook::testing
