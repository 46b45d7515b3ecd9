// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "interaction/find/wildcard.h"
#include "stockbook/base/substring.h"

namespace stockbook::app {

// How words are compared with texts; all off is what a clerk expects who just types.
struct FindOptions {
  bool match_case = false;
  bool whole_words = false;
  // `* ? # [...]` stand for other characters, as in the control's own find, instead of for themselves.
  bool patterns = false;

  bool operator==(const FindOptions&) const = default;
};

// One word to look for in the texts that cells show. A number is found with its grouping commas or without them:
// 10032.68 and 10,032.68 are both in "10,032.68". As a whole word, a number is also found where only zeros follow
// its decimals: 12 in "12.00", but not in "12.50" or "112". A whole pattern is one that fits a whole cell. Immutable.
class FindWord {
 public:
  // Throws platform::Error with a message for the user if it is a pattern and malformed.
  FindWord(std::string_view word, FindOptions options);

  bool IsIn(std::string_view text) const;
  // The parts, in small letters, that a text must contain in small letters and without grouping commas.
  const std::vector<std::string>& literals() const { return literals_; }
  // Whether every such text has the word.
  bool IsItsLiteral() const { return is_its_literal_; }
  const std::string& text() const { return text_; }

 private:
  void ReadLiterals(FindOptions options);
  bool RollsThrough(std::string_view text) const;
  bool IsInEither(std::string_view text) const;
  bool IsInAsItIs(std::string_view text) const;
  bool IsWholeIn(std::string_view text) const;

  std::string text_;
  FindOptions options_;
  bool small_letters_ = false;  // texts are compared in small letters
  bool spans_groups_ = false;   // might be found only without commas
  bool has_commas_ = false;     // might be found only with them
  bool is_its_literal_ = false;
  // The bytes of a short plain word, and where they are in a number of eight bytes; the mask is 0 for other words.
  uint64_t bytes_ = 0;
  uint64_t mask_ = 0;
  std::vector<std::string> literals_;
  std::optional<base::Substring> part_;
  std::optional<interaction::Wildcard> pattern_;
};

// The words of a text, which blanks (also full-width ones) separate; each once.
std::vector<std::string> SplitWords(std::string_view text);

// The text without the commas between two digits.
std::string WithoutGrouping(std::string_view text);

}  // namespace stockbook::app
