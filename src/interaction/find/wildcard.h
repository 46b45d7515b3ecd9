// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/substring.h"

namespace stockbook::interaction {

// A pattern that a whole text matches or does not: `*` stands for any run of characters, `?` for one, `#` for one of
// the digits 0 to 9, `[abc]`, `[a-z]` for one of a list, `[!...]` for one that is not in it, `[]` for nothing, and
// everything else for itself, case included. A `-` at either end of a list, a `!` that is alone in it and a `]` outside
// of one are themselves. Characters are code points of UTF-8. Matching takes time linear in the text: all places of
// the pattern that the text read so far can have led to are kept as bits and moved together.
class Wildcard {
 public:
  // Patterns with wildcards have at most so many characters.
  static constexpr size_t kMostCharacters = 4096;

  // A list that is not closed, a range whose end is below its beginning and a pattern that is too long throw
  // platform::Error.
  explicit Wildcard(std::string_view pattern);

  bool Matches(std::string_view text) const;
  // Whether some text of these ASCII characters alone could match.
  bool CanMatchTextsOf(std::string_view characters) const;
  // Where the pattern asks for nothing but that a text stands somewhere: that text.
  const base::Substring* Contained() const { return contained_ ? &*contained_ : nullptr; }

 private:
  struct Range {
    char32_t first = 0;
    char32_t last = 0;
  };
  // One character that is asked for.
  struct Place {
    std::vector<Range> ranges;
    bool accepts_others = false;
    bool Accepts(char32_t character) const;
  };

  // Reads the pattern into places_ and loops_; true when no wildcard but `*` stands in it.
  bool Parse(std::string_view pattern);
  // Reads the list behind '['; gives the text behind its ']'.
  std::string_view ParseList(std::string_view rest, std::string_view pattern);
  void MakeMasks();
  const uint64_t* MaskOf(char32_t character) const;
  bool MatchesShort(std::string_view text) const;
  bool MatchesLong(std::string_view text) const;

  std::optional<base::Substring> contained_;
  std::vector<Place> places_;
  std::vector<size_t> loops_;  // how many places stand before each `*`
  size_t words_ = 1;           // of a set of states; state i: the first i places are matched
  std::vector<uint64_t> loop_mask_;
  // Characters that no place tells apart have one mask: bit i, whether place i accepts them.
  std::vector<char32_t> class_begins_;
  std::vector<uint64_t> masks_;
  std::vector<uint32_t> ascii_classes_;
};

}  // namespace stockbook::interaction
