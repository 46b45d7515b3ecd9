// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "interaction/find/wildcard.h"

namespace stockbook::interaction {

// Up to eight search terms, one bit each, that are tested together. A term is found in a text that is not blank and
// that matches the term with any characters before and after it.
class TermGroup {
 public:
  static constexpr size_t kMostTerms = 8;

  // A malformed term throws platform::Error.
  void Add(std::string_view term);
  bool IsFull() const { return terms_.size() == kMostTerms; }
  const std::vector<Wildcard>& terms() const { return terms_; }
  // The bits of all terms, and of those that the text of a number could contain.
  uint8_t all() const { return all_; }
  uint8_t in_numbers() const { return in_numbers_; }

  // The bits of the `wanted` terms that are found in the text. The search may stop as soon as one of the `needed` terms
  // is missing.
  uint8_t FoundIn(std::string_view text, uint8_t wanted, uint8_t needed = 0) const;

 private:
  std::vector<Wildcard> terms_;
  uint8_t all_ = 0;
  uint8_t in_numbers_ = 0;
};

// All terms of a search; a row must hold every one.
class SearchTerms {
 public:
  // The terms are separated by bars; empty ones are skipped.
  explicit SearchTerms(std::string_view between_bars);

  const std::vector<TermGroup>& groups() const { return groups_; }

 private:
  std::vector<TermGroup> groups_;
};

}  // namespace stockbook::interaction
