// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "columns/column.h"
#include "interaction/find/number_matcher.h"
#include "interaction/find/search_terms.h"

namespace stockbook::interaction {

// Tells in which records of a loaded column the terms of a group are found. Texts are searched once each, when the
// matcher is made, and records looked up by code; of many texts only for the rarest term, the others are looked for in
// the records that are asked for. Numbers are tested by their digits; dates and the like are made texts, repeated ones
// once. Borrows the column, the group and its matcher of numbers.
class ColumnMatcher {
 public:
  ColumnMatcher(const columns::Column& column, const TermGroup& terms, const NumberMatcher& numbers);

  // The terms that some record is known to hold, and those that must still be looked for record by record.
  uint8_t known() const { return known_; }
  uint8_t open() const { return open_; }
  // Whether looking for the open terms reads texts, which costs more than numbers.
  bool HasManyTexts() const { return found_by_code_.size() >= kManyTexts; }
  const columns::Column* column() const { return column_; }

  // Adds the known terms to those already found in each of the records from `first` on.
  void AddKnown(size_t first, std::span<uint8_t> found) const;
  // Adds the open terms found in the records first + at[0], first + at[1], ... (ascending) to found[at[0]],
  // found[at[1]], ... A record that would not have all terms even if it had all of `rest` may be left alone.
  void AddOpen(size_t first, std::span<const uint16_t> at, uint8_t rest, std::span<uint8_t> found);

 private:
  static constexpr size_t kManyTexts = 8192;
  // What was found in a value.
  struct Tested {
    int64_t raw = 0;
    uint8_t found = 0;
    bool is_set = false;
  };

  // Looks for a term in all texts.
  void FindInTexts(uint8_t bit);
  // The same for all open terms.
  void FindInAllTexts();
  // The one that is found in the fewest texts of a sample, among those that can be in no number if there are any.
  uint8_t RarestTerm() const;
  uint8_t FoundInText(uint32_t code, uint8_t found, uint8_t rest);
  uint8_t FoundInValue(size_t record, int64_t raw, const columns::RawRows& rows);
  // Makes room to keep what is found in the values of rows, if values can be expected to come again.
  void Prepare(const columns::RawRows& rows, size_t chunk);
  // As FoundInValue, but kept.
  uint8_t FoundInRepeated(size_t record, int64_t raw, const columns::RawRows& rows);

  const columns::Column* column_;
  const TermGroup* terms_;
  const NumberMatcher* numbers_;
  uint8_t known_ = 0;
  uint8_t open_ = 0;
  size_t tried_ = 0;  // texts in which the open terms have been looked for one by one
  std::vector<uint8_t> found_by_code_;
  columns::RawRows prepared_;
  size_t prepared_chunk_ = SIZE_MAX;
  std::vector<uint16_t> tested_by_distance_;  // from the least value: what was found, and kTested; of narrow ranges
  std::vector<Tested> tested_by_hash_;
  std::string text_;
};

}  // namespace stockbook::interaction
