// SPDX-License-Identifier: MIT
#include "stockbook/base/seeded_hash.h"

#include <chrono>
#include <cstring>
#include <exception>
#include <random>

#include "base/folded_product.h"

namespace stockbook::base {
namespace {

struct Seed {
  uint64_t first;
  uint64_t second;
};

Seed RandomSeed() {
  try {
    std::random_device random;
    const auto word = [&random] { return uint64_t{random()} << 32 | random(); };
    const uint64_t first = word();
    return {first, word() | 1};
  } catch (const std::exception&) {
    // Without a source of randomness, the clock is at least not in the file.
    std::mt19937_64 random(static_cast<uint64_t>(std::chrono::high_resolution_clock::now().time_since_epoch().count()));
    const uint64_t first = random();
    return {first, random() | 1};
  }
}

const Seed& ProcessSeed() {
  static const Seed seed = RandomSeed();
  return seed;
}

template <typename Word>
uint64_t WordAt(const char* at) {
  Word word = 0;
  std::memcpy(&word, at, sizeof word);
  return word;
}

}  // namespace

SeededHash::SeededHash() : first_(ProcessSeed().first), second_(ProcessSeed().second) {}

uint64_t SeededHash::operator()(std::string_view bytes) const {
  const char* at = bytes.data();
  size_t left = bytes.size();
  uint64_t state = first_ ^ left;
  for (; left > 16; at += 16, left -= 16)
    state = FoldedProduct(WordAt<uint64_t>(at) ^ second_, WordAt<uint64_t>(at + 8) ^ state);
  // The words of the end overlap where it is short.
  uint64_t front = 0;
  uint64_t back = 0;
  if (left >= 8) {
    front = WordAt<uint64_t>(at);
    back = WordAt<uint64_t>(at + left - 8);
  } else if (left >= 4) {
    front = WordAt<uint32_t>(at);
    back = WordAt<uint32_t>(at + left - 4);
  } else if (left > 0) {
    front = WordAt<uint8_t>(at) << 8 | WordAt<uint8_t>(at + left / 2);
    back = WordAt<uint8_t>(at + left - 1);
  }
  return FoldedProduct(FoldedProduct(front ^ second_, back ^ state), second_);
}

uint64_t SeededHash::operator()(uint64_t number) const { return FoldedProduct(number ^ first_, second_); }

}  // namespace stockbook::base
