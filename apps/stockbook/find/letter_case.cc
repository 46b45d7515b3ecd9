// SPDX-License-Identifier: MIT
#include "stockbook/find/letter_case.h"

namespace stockbook::app {
namespace {

constexpr unsigned char kTwoBytes = 0xC0;
constexpr unsigned char kThreeBytes = 0xE0;

bool IsWithin(char32_t character, char32_t first, char32_t last) { return character >= first && character <= last; }

// Whether a capital is written with this character, or a small letter that has one.
bool HasOtherCase(char32_t character) {
  if (SmallLetter(character) != character) return true;
  return IsWithin(character, 'a', 'z') || (IsWithin(character, 0xE0, 0xFE) && character != 0xF7) ||
         IsWithin(character, 0x3B1, 0x3C9) || IsWithin(character, 0x430, 0x44F) || character == 0x451;
}

}  // namespace

char32_t SmallLetter(char32_t character) {
  constexpr char32_t kStep = 0x20;
  if (character < 0x80) return IsWithin(character, 'A', 'Z') ? character + kStep : character;
  const bool latin = IsWithin(character, 0xC0, 0xDE) && character != 0xD7;
  const bool greek = IsWithin(character, 0x391, 0x3A9) && character != 0x3A2;
  if (latin || greek || IsWithin(character, 0x410, 0x42F)) return character + kStep;
  return character == 0x401 ? 0x451 : character;
}

char32_t TakeCharacter(std::string_view& text) {
  const auto byte = [&](size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned char lead = byte(0);
  const size_t length = lead < kTwoBytes ? 1 : lead < kThreeBytes ? 2 : lead < 0xF0 ? 3 : 4;
  char32_t character = lead;
  if (length > 1 && text.size() >= length) {
    character = lead & (0xFFU >> (length + 1));
    for (size_t at = 1; at < length; ++at) character = character << 6 | (byte(at) & 0x3FU);
    text.remove_prefix(length);
  } else {
    text.remove_prefix(1);
  }
  return character;
}

size_t WriteSmallLetters(std::string_view text, char* out) {
  unsigned char any_pair = 0;
  for (size_t at = 0; at < text.size(); ++at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    const bool capital = static_cast<unsigned char>(byte - 'A') < 26;
    out[at] = static_cast<char>(byte + (capital ? 'a' - 'A' : 0));
    any_pair |= static_cast<unsigned char>((byte & kThreeBytes) == kTwoBytes);
  }
  if (any_pair == 0) return text.size();
  for (std::string_view rest = text; !rest.empty();) {
    const size_t at = text.size() - rest.size();
    const char32_t character = TakeCharacter(rest);
    if (text.size() - rest.size() - at != 2) continue;
    const char32_t small = SmallLetter(character);
    out[at] = static_cast<char>(0xC0U | (small >> 6));
    out[at + 1] = static_cast<char>(0x80U | (small & 0x3FU));
  }
  return text.size();
}

std::string InSmallLetters(std::string_view text) {
  std::string small(text.size(), '\0');
  WriteSmallLetters(text, small.data());
  return small;
}

bool HasCase(std::string_view text) {
  while (!text.empty()) {
    if (HasOtherCase(TakeCharacter(text))) return true;
  }
  return false;
}

}  // namespace stockbook::app
