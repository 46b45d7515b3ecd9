// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "interaction/find/number_matcher.h"
#include "interaction/find/search_terms.h"
#include "stockbook/columns/column.h"

namespace stockbook::interaction {

// Finds the records of a loaded column that contain terms of a group. Each distinct text is searched once, when the
// matcher is created, and records are then looked up by text code; if there are many texts, only the rarest term is
// handled like this, and the others are looked for in the records asked about. Numbers are tested by their digits;
// dates and other types are turned into text, repeated values once. Borrows the column, the group and its number
// matcher.
class ColumnMatcher {
 public:
  ColumnMatcher(const columns::Column& column, const TermGroup& terms, const NumberMatcher& numbers);

  // The terms known to occur in some record, and those that must still be looked for record by record.
  uint8_t known() const { return known_; }
  uint8_t open() const { return open_; }
  // Whether looking for the open terms reads texts, which is slower than reading numbers.
  bool HasManyTexts() const { return found_by_code_.size() >= kManyTexts; }
  const columns::Column* column() const { return column_; }

  // Adds the known terms to the terms already found in each record from `first` on.
  void AddKnown(size_t first, std::span<uint8_t> found) const;
  // Adds the open terms found in the records first + at[0], first + at[1], ... (ascending) to found[at[0]],
  // found[at[1]], ... May skip a record that would lack a term even if it had all of `rest`.
  void AddOpen(size_t first, std::span<const uint16_t> at, uint8_t rest, std::span<uint8_t> found);

 private:
  static constexpr size_t kManyTexts = 8192;
  // The terms found in a value.
  struct Tested {
    int64_t raw = 0;
    uint8_t found = 0;
    bool is_set = false;
  };

  // Looks for one term in all texts.
  void FindInTexts(uint8_t bit);
  // The same for all open terms.
  void FindInAllTexts();
  // The term found in the fewest texts of a sample; terms that cannot occur in a number come first.
  uint8_t RarestTerm() const;
  uint8_t FoundInText(uint32_t code, uint8_t found, uint8_t rest);
  uint8_t FoundInValue(size_t record, int64_t raw, const columns::RawRows& rows);
  // Makes room for the results by value, if values are likely to repeat.
  void Prepare(const columns::RawRows& rows, size_t chunk);
  // Like FoundInValue, but remembers the result.
  uint8_t FoundInRepeated(size_t record, int64_t raw, const columns::RawRows& rows);

  const columns::Column* column_;
  const TermGroup* terms_;
  const NumberMatcher* numbers_;
  uint8_t known_ = 0;
  uint8_t open_ = 0;
  size_t tried_ = 0;  // texts searched one by one for the open terms
  std::vector<uint8_t> found_by_code_;
  columns::RawRows prepared_;
  size_t prepared_chunk_ = SIZE_MAX;
  // For narrow ranges, by distance from the least value: the terms found, and kTested.
  std::vector<uint16_t> tested_by_distance_;
  std::vector<Tested> tested_by_hash_;
  std::string text_;
};

}  // namespace stockbook::interaction
