// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "interaction/find/search_terms.h"

namespace stockbook::interaction {

// Finds which terms of a group occur in the default text of a number, mostly without producing the text. Digits of a
// term are looked up in tables indexed by windows of four digits; digits around a decimal point are compared with the
// end of the integer part and the start of the fraction. Only when a term contains more than digits, and its digits
// occur, is the text produced and searched. Borrows the group; immutable; 20 KB.
class NumberMatcher {
 public:
  // Larger numbers do not show all their digits.
  static constexpr int64_t kMostUnits = 1'000'000'000'000'000;

  explicit NumberMatcher(const TermGroup& terms);

  // The bits of the terms that occur in the text of units / 10^decimals, for units from -kMostUnits to kMostUnits and
  // decimals from 0 to 15.
  uint8_t FoundIn(int64_t units, int decimals) const;

 private:
  static constexpr size_t kWindow = 4;  // digits

  struct Digits {
    std::string_view text;
    uint8_t bit = 0;
  };

  // A term made of digits, a point and digits; the digits on one side may be missing.
  struct Point {
    uint8_t bit = 0;
    uint64_t whole = 0;
    uint64_t whole_unit = 1;   // 10^digits
    uint64_t whole_least = 0;  // the least number with that many digits
    uint64_t fraction = 0;
    int places = 0;
  };

  void AddTerm(uint8_t bit, const Wildcard& term);
  bool AddPoint(uint8_t bit, std::string_view term);
  void AddDigits(const Digits& digits);
  // An integer, or that many decimal places not ending in 0; each window starts kStep digits after the one before.
  template <int kStep>
  uint8_t FoundInWhole(uint64_t whole) const;
  template <int kStep>
  uint8_t FoundInPlaces(uint64_t fraction, int places) const;
  uint8_t FoundInDigits(uint64_t whole, uint64_t fraction, int places) const;
  uint8_t FoundAroundPoint(uint64_t whole, uint64_t fraction, int places) const;

  const TermGroup& terms_;
  uint8_t exact_ = 0;   // terms that consist of a few digits only
  uint8_t always_ = 0;  // terms without any known digits
  bool has_digits_ = false;
  size_t longest_ = 1;  // digits of the longest term that is looked up
  std::vector<Point> points_;
  // By number of digits: the terms whose digits occur in a number padded to that many digits with leading zeros.
  std::array<std::vector<uint8_t>, kWindow + 1> padded_;
  // The same for a number without leading zeros, and for one without trailing zeros.
  std::vector<uint8_t> plain_;
  std::vector<uint8_t> trimmed_;
};

}  // namespace stockbook::interaction
