// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "databases/dialect/like_pattern.h"

namespace stockbook::databases {

// A piece of a pattern of LIKE: text as it stands, any text, one character, or one of a class.
struct LikeElement {
  enum class Kind { kText, kAny, kOne, kClass };
  Kind kind = Kind::kText;
  std::string text;  // of kText; the members of a kClass as they are written, such as a-z
  bool negated = false;
};

// The pieces as MatchesLike reads them.
std::vector<LikeElement> LikeElements(std::string_view pattern, Wildcards wildcards);

// In standard SQL, with a backslash before what stands for itself. The pieces have no classes.
std::string SimplePattern(const std::vector<LikeElement>& elements);
// As a POSIX regular expression for the whole text.
std::string RegularExpression(const std::vector<LikeElement>& elements);
// As SQL Server has it, with what stands for itself in brackets.
std::string BracketPattern(const std::vector<LikeElement>& elements);

}  // namespace stockbook::databases
