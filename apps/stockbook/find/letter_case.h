// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace stockbook::app {

// The small letter of a Latin, Greek or Cyrillic capital, which journals use for models and diameters; any other
// character as it is. The small letter takes as many bytes of UTF-8.
char32_t SmallLetter(char32_t character);

// The text with all its capitals replaced by small letters, byte for byte at the same places.
std::string InSmallLetters(std::string_view text);
// The same, written to `out`, which has room for the text; returns its length.
size_t WriteSmallLetters(std::string_view text, char* out);
// Whether any character of the text has another case.
bool HasCase(std::string_view text);

// Takes the first character off the text, which is not empty and is UTF-8; a malformed byte is a character of its own.
char32_t TakeCharacter(std::string_view& text);

}  // namespace stockbook::app
