// SPDX-License-Identifier: MIT
#include "interaction/find/search_terms.h"

#include <string>

#include "base/text.h"

namespace stockbook::interaction {
namespace {

// The characters that occur in the default texts of numbers.
constexpr std::string_view kNumberCharacters = "0123456789-.E+";

// A sign occurs at the start of a number and of its exponent.
bool MayStandInNumbers(const Wildcard& term) {
  if (!term.CanMatchTextsOf(kNumberCharacters)) return false;
  if (term.Contained() == nullptr) return true;
  const std::string& text = term.Contained()->text();
  for (size_t at = text.find_first_of("-+", 1); at < text.size(); at = text.find_first_of("-+", at + 1)) {
    if (text[at - 1] != 'E') return false;
  }
  return true;
}

}  // namespace

void TermGroup::Add(std::string_view term) {
  const auto bit = static_cast<uint8_t>(1U << terms_.size());
  terms_.emplace_back("*" + std::string(term) + "*");
  all_ |= bit;
  if (MayStandInNumbers(terms_.back())) in_numbers_ |= bit;
}

uint8_t TermGroup::FoundIn(std::string_view text, uint8_t wanted, uint8_t needed) const {
  if (base::TrimBlanks(text).empty()) return 0;
  uint8_t found = 0;
  for (size_t at = 0; at < terms_.size(); ++at) {
    const auto bit = static_cast<uint8_t>(1U << at);
    if ((wanted & bit) == 0) continue;
    if (terms_[at].Matches(text))
      found |= bit;
    else if ((needed & bit) != 0)
      break;
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
