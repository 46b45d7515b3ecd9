// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/base/api.h"

namespace stockbook::base {

// All texts are UTF-8; a length "in characters" counts code points.

// The text with every malformed sequence and every NUL replaced by U+FFFD, so that it is shown, copied and compared
// alike everywhere.
STOCKBOOK_API std::string CleanUtf8(std::string_view bytes);
STOCKBOOK_API bool IsCleanUtf8(std::string_view bytes);

STOCKBOOK_API size_t CharacterCount(std::string_view text);
// The first / last `count` characters; the whole text when it is shorter.
STOCKBOOK_API std::string_view LeftCharacters(std::string_view text, size_t count);
STOCKBOOK_API std::string_view RightCharacters(std::string_view text, size_t count);
// `count` characters from the `first`-th on (counted from 1).
STOCKBOOK_API std::string_view MidCharacters(std::string_view text, size_t first, size_t count);

// Without leading and trailing blanks (U+0020 only).
STOCKBOOK_API std::string_view TrimBlanks(std::string_view text);
// With each line break ("\n") replaced and every "\r" left out.
STOCKBOOK_API std::string OneLine(std::string_view text, std::string_view instead_of_breaks);
STOCKBOOK_API std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view by);
// The pieces between separators; a text without one is one piece, the empty text one empty piece.
STOCKBOOK_API std::vector<std::string_view> Split(std::string_view text, char separator);
constexpr char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
STOCKBOOK_API std::string AsciiLower(std::string_view text);
STOCKBOOK_API bool EqualsIgnoringCase(std::string_view left, std::string_view right);

}  // namespace stockbook::base
