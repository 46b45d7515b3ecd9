// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "interaction/search_terms.h"

namespace stockbook::interaction {

// Tells which terms of a group stand in the default text of a number, mostly without making the text: a term that is or
// holds some digits is looked for in windows of four digits, whose answers stand in tables; only where a term is more
// than its digits, and they are there, the text decides. Borrows the group; immutable, 20 KB.
class NumberMatcher {
 public:
  // Numbers beyond do not show all digits.
  static constexpr int64_t kMostUnits = 1'000'000'000'000'000;

  explicit NumberMatcher(const TermGroup& terms);

  // The bits of those of the `wanted` terms that are found in the text of units / 10^decimals; the units lie between
  // -kMostUnits and kMostUnits, the decimals between 0 and 15.
  uint8_t FoundIn(int64_t units, int decimals, uint8_t wanted) const;

 private:
  static constexpr size_t kWindow = 4;  // digits

  struct Digits {
    std::string_view text;
    uint8_t bit = 0;
  };

  void AddDigits(const Digits& digits);
  uint8_t FoundInWhole(uint64_t whole) const;
  uint8_t FoundInFraction(uint64_t fraction, int places) const;

  const TermGroup& terms_;
  uint8_t exact_ = 0;   // terms that are digits and nothing else, and few
  uint8_t always_ = 0;  // terms of which no digits are known
  uint64_t step_ = 1;   // 10^(digits that the next window is further on)
  int step_places_ = 0;
  // By how many digits: the terms whose digits stand in a number of so many digits, zeros in front.
  std::array<std::vector<uint8_t>, kWindow + 1> padded_;
  // The same of a number without zeros in front.
  std::vector<uint8_t> plain_;
};

}  // namespace stockbook::interaction
