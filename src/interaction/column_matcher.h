// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "interaction/number_matcher.h"
#include "interaction/search_terms.h"
#include "platform/column.h"

namespace stockbook::interaction {

// Tells in which records of a loaded column the terms of a group are found. Every distinct text is tested once, when
// the matcher is made, and records are looked up by code; numbers and dates are made texts only where that can decide
// about a record, repeated ones once. Borrows the column, the
// group and its matcher of numbers.
class ColumnMatcher {
 public:
  ColumnMatcher(const platform::Column& column, const TermGroup& terms, const NumberMatcher& numbers);

  // The terms that may be found in it at all.
  uint8_t possible() const { return possible_; }
  // Whether records are looked up by code, which is cheap.
  bool HasCodes() const { return column_->HasTextCodes(); }
  // What a record costs, to begin with the cheapest column.
  int Cost() const { return !HasCodes() ? 2 : found_by_code_.size() < kManyTexts ? 0 : 1; }
  const platform::Column* column() const { return column_; }

  // Adds the terms found in the records from `first` on to those already found in each of them. A record that has all
  // terms is left alone, and so may be one that would not have them all even if it had all of `rest`.
  void AddFound(size_t first, uint8_t rest, std::span<uint8_t> found);

 private:
  static constexpr size_t kKnown = 1024;
  static constexpr size_t kManyTexts = 8192;
  struct Known {
    int64_t raw = 0;
    uint8_t found = 0;
    bool is_set = false;
  };

  // Looks for a term in all texts.
  void FindInTexts(uint8_t bit);
  // Of the terms not looked for yet, the one that is found in the fewest texts of a sample.
  uint8_t RarestTerm() const;
  void AddFoundByCode(size_t first, uint8_t rest, std::span<uint8_t> found);
  uint8_t FoundInText(uint32_t code, uint8_t found, uint8_t rest);
  void AddFoundByValue(size_t first, const platform::RawRows& rows, std::span<const int64_t> raw, uint8_t rest,
                       std::span<uint8_t> found);
  uint8_t FoundInValue(size_t record, int64_t raw, const platform::RawRows& rows, uint8_t wanted);

  const platform::Column* column_;
  const TermGroup* terms_;
  const NumberMatcher* numbers_;
  uint8_t possible_ = 0;
  uint8_t any_by_code_ = 0;
  uint8_t open_ = 0;  // terms that have not been looked for in all texts
  size_t tried_ = 0;  // texts in which they have been looked for one by one
  std::vector<uint8_t> found_by_code_;
  std::vector<Known> known_;  // by hash of the value
  platform::RawRows known_kind_;
  size_t known_chunk_ = 0;
  std::string text_;
};

}  // namespace stockbook::interaction
