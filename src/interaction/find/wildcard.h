// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/base/substring.h"

namespace stockbook::interaction {

// A pattern that is matched against a whole text: `*` stands for any run of characters, `?` for one character, `#` for
// one digit 0 to 9, `[abc]` or `[a-z]` for one character of a list, `[!...]` for one not in the list, `[]` for nothing,
// and every other character for itself, case included. A `-` at either end of a list, a `!` alone in a list and a `]`
// outside a list are literal. Characters are UTF-8 code points. Matching takes time linear in the length of the text:
// the set of pattern positions reachable after the text read so far is kept as bits, which all advance together.
class Wildcard {
 public:
  // The maximum length of a pattern with wildcards, in characters.
  static constexpr size_t kMostCharacters = 4096;

  // Throws platform::Error for an unclosed list, a range whose end is below its start, or a pattern that is too long.
  explicit Wildcard(std::string_view pattern);

  bool Matches(std::string_view text) const;
  // Whether a text made only of these ASCII characters could match.
  bool CanMatchTextsOf(std::string_view characters) const;
  // If the pattern only requires that the text contains a literal: that literal.
  const base::Substring* Contained() const { return contained_ ? &*contained_ : nullptr; }

 private:
  struct Range {
    char32_t first = 0;
    char32_t last = 0;
  };
  // One required character.
  struct Place {
    std::vector<Range> ranges;
    bool accepts_others = false;
    bool Accepts(char32_t character) const;
  };

  // Parses the pattern into places_ and loops_; true when `*` is the only wildcard in it.
  bool Parse(std::string_view pattern);
  // Parses the list after '['; returns the text after its ']'.
  std::string_view ParseList(std::string_view rest, std::string_view pattern);
  void MakeMasks();
  const uint64_t* MaskOf(char32_t character) const;
  bool MatchesShort(std::string_view text) const;
  bool MatchesLong(std::string_view text) const;

  std::optional<base::Substring> contained_;
  std::vector<Place> places_;
  std::vector<size_t> loops_;  // the number of places before each `*`
  size_t words_ = 1;           // size of a set of states; state i: the first i places are matched
  std::vector<uint64_t> loop_mask_;
  // Characters that no place distinguishes share a mask: bit i says whether place i accepts them.
  std::vector<char32_t> class_begins_;
  std::vector<uint64_t> masks_;
  std::vector<uint32_t> ascii_classes_;
};

}  // namespace stockbook::interaction
