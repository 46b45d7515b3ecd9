// SPDX-License-Identifier: MIT
#include "databases/sqlite/known_texts.h"

#include <bit>
#include <cstring>

namespace stockbook::databases {

namespace {

template <typename Word>
uint64_t WordAt(const char* bytes) {
  Word word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// Its first and its last bytes, which may be the same.
uint64_t EndsOf(std::string_view text) {
  const char* end = text.data() + text.size();
  if (text.size() >= 8) return WordAt<uint64_t>(text.data()) ^ std::rotl(WordAt<uint64_t>(end - 8), 7);
  if (text.size() >= 4) return WordAt<uint32_t>(text.data()) ^ std::rotl(WordAt<uint32_t>(end - 4), 7);
  if (text.empty()) return 0;
  return WordAt<uint8_t>(text.data()) ^ std::rotl(WordAt<uint8_t>(end - 1), 7);
}

}  // namespace

// Whoever makes texts collide here makes them as slow as they would be without this.
size_t KnownTexts::SlotOf(std::string_view text) {
  constexpr uint64_t kSpread = 0x9E3779B97F4A7C15U;
  return static_cast<size_t>((EndsOf(text) + text.size()) * kSpread >> 58) % kSlots;
}

std::span<const uint32_t> KnownTexts::CodesOf(std::string_view text) {
  constexpr size_t kTrial = 4096;
  constexpr size_t kLeastShare = 4;
  if (given_up_ || known_.empty() || text.size() > kLongest) return {};
  if (++asked_ == kTrial) {
    given_up_ = found_ < kTrial / kLeastShare;
    asked_ = 0;
    found_ = 0;
  }
  const Known& known = known_[SlotOf(text)];
  if (known.codes.empty() || known.text != text) return {};
  ++found_;
  return known.codes;
}

void KnownTexts::Remember(std::string_view text, std::span<const uint32_t> codes) {
  if (known_.empty()) known_.resize(kSlots);
  Known& known = known_[SlotOf(text)];
  known.text = text;
  known.codes.assign(codes.begin(), codes.end());
}

}  // namespace stockbook::databases
