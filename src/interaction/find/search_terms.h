// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "interaction/find/wildcard.h"

namespace stockbook::interaction {

// Up to eight search terms, a bit each, that are tested together. A term is found in a text that is not blank and that
// matches the term with any run of characters before and behind it.
class TermGroup {
 public:
  static constexpr size_t kMostTerms = 8;

  // A term that is no pattern throws platform::Error.
  void Add(std::string_view term);
  bool IsFull() const { return terms_.size() == kMostTerms; }
  const std::vector<Wildcard>& terms() const { return terms_; }
  // The bits of all terms, and of those that the text of some number could hold.
  uint8_t all() const { return all_; }
  uint8_t in_numbers() const { return in_numbers_; }

  // The bits of those of the `wanted` terms that are found in the text. The rest may be left out as soon as one of the
  // `needed` ones is not found.
  uint8_t FoundIn(std::string_view text, uint8_t wanted, uint8_t needed = 0) const;

 private:
  std::vector<Wildcard> terms_;
  uint8_t all_ = 0;
  uint8_t in_numbers_ = 0;
};

// All terms of a search; a row must hold every one.
class SearchTerms {
 public:
  // The terms stand between bars; empty ones are passed over.
  explicit SearchTerms(std::string_view between_bars);

  const std::vector<TermGroup>& groups() const { return groups_; }

 private:
  std::vector<TermGroup> groups_;
};

}  // namespace stockbook::interaction
