// SPDX-License-Identifier: MIT
#include "interaction/search_terms.h"

#include <string>

#include "base/text.h"

namespace stockbook::interaction {
namespace {

// What the default texts of numbers and dates are made of.
constexpr std::string_view kNumberCharacters = "0123456789-.E+: ";

}  // namespace

void TermGroup::Add(std::string_view term) {
  const auto bit = static_cast<uint8_t>(1U << terms_.size());
  terms_.emplace_back("*" + std::string(term) + "*");
  all_ |= bit;
  if (terms_.back().CanMatchTextsOf(kNumberCharacters)) in_numbers_ |= bit;
}

uint8_t TermGroup::FoundIn(std::string_view text, uint8_t wanted) const {
  if (base::TrimBlanks(text).empty()) return 0;
  uint8_t found = 0;
  for (size_t at = 0; at < terms_.size(); ++at) {
    const auto bit = static_cast<uint8_t>(1U << at);
    if ((wanted & bit) != 0 && terms_[at].Matches(text)) found |= bit;
  }
  return found;
}

SearchTerms::SearchTerms(std::string_view between_bars) {
  for (const std::string_view piece : base::Split(between_bars, '|')) {
    const std::string_view term = base::TrimBlanks(piece);
    if (term.empty()) continue;
    if (groups_.empty() || groups_.back().IsFull()) groups_.emplace_back();
    groups_.back().Add(term);
  }
}

}  // namespace stockbook::interaction
