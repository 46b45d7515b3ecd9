// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "interaction/find/search_terms.h"

namespace stockbook::interaction {

// Tells which terms of a group stand in the default text of a number, mostly without making the text: a term that is or
// holds some digits is looked for in windows of four digits, whose answers stand in tables; digits around a point are
// compared with the end of the whole part and the beginning of the rest; only where a term is more, and its digits are
// there, the text decides. Borrows the group; immutable, 20 KB.
class NumberMatcher {
 public:
  // Numbers beyond do not show all digits.
  static constexpr int64_t kMostUnits = 1'000'000'000'000'000;

  explicit NumberMatcher(const TermGroup& terms);

  // The bits of the terms that are found in the text of units / 10^decimals; the units lie between -kMostUnits and
  // kMostUnits, the decimals between 0 and 15.
  uint8_t FoundIn(int64_t units, int decimals) const;

 private:
  static constexpr size_t kWindow = 4;  // digits

  struct Digits {
    std::string_view text;
    uint8_t bit = 0;
  };

  // A term of digits, a point and digits; there may be none on one side of the point.
  struct Point {
    uint8_t bit = 0;
    uint64_t whole = 0;
    uint64_t whole_unit = 1;   // 10^digits
    uint64_t whole_least = 0;  // what has so many digits
    uint64_t fraction = 0;
    int places = 0;
  };

  void AddTerm(uint8_t bit, const Wildcard& term);
  bool AddPoint(uint8_t bit, std::string_view term);
  void AddDigits(const Digits& digits);
  // A whole number, and so many places behind the point that do not end in 0; the next window is kStep digits further
  // on.
  template <int kStep>
  uint8_t FoundInWhole(uint64_t whole) const;
  template <int kStep>
  uint8_t FoundInPlaces(uint64_t fraction, int places) const;
  uint8_t FoundInDigits(uint64_t whole, uint64_t fraction, int places) const;
  uint8_t FoundAroundPoint(uint64_t whole, uint64_t fraction, int places) const;

  const TermGroup& terms_;
  uint8_t exact_ = 0;   // terms that are digits and nothing else, and few
  uint8_t always_ = 0;  // terms of which no digits are known
  bool has_digits_ = false;
  size_t longest_ = 1;  // digits looked for
  std::vector<Point> points_;
  // By how many digits: the terms whose digits stand in a number of so many digits, zeros in front.
  std::array<std::vector<uint8_t>, kWindow + 1> padded_;
  // The same of a number without zeros in front, and of one without zeros at its end.
  std::vector<uint8_t> plain_;
  std::vector<uint8_t> trimmed_;
};

}  // namespace stockbook::interaction
