// SPDX-License-Identifier: MIT
#include "base/text.h"

#include <algorithm>

namespace stockbook::base {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// Length of the well-formed sequence at the front of the text, or 0.
size_t SequenceLength(std::string_view text) {
  const auto byte = [&](size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned char lead = byte(0);
  if (lead == 0) return 0;
  if (lead < 0x80) return 1;
  const size_t length = lead >= 0xC2 && lead < 0xE0   ? 2
                        : lead >= 0xE0 && lead < 0xF0 ? 3
                        : lead >= 0xF0 && lead < 0xF5 ? 4
                                                      : 0;
  if (length == 0 || text.size() < length) return 0;
  for (size_t at = 1; at < length; ++at) {
    if (!IsContinuation(text[at])) return 0;
  }
  const unsigned char second = byte(1);
  const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool outside = (lead == 0xED && second >= 0xA0) || (lead == 0xF4 && second >= 0x90);
  return overlong || outside ? 0 : length;
}

size_t NextCharacter(std::string_view text, size_t at) {
  ++at;
  while (at < text.size() && IsContinuation(text[at])) ++at;
  return at;
}

}  // namespace

bool IsCleanUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const size_t length = SequenceLength(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

std::string CleanUtf8(std::string_view bytes) {
  std::string clean;
  clean.reserve(bytes.size());
  while (!bytes.empty()) {
    const size_t length = SequenceLength(bytes);
    clean += length == 0 ? kReplacement : bytes.substr(0, length);
    bytes.remove_prefix(std::max<size_t>(length, 1));
  }
  return clean;
}

size_t CharacterCount(std::string_view text) {
  return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) { return !IsContinuation(c); }));
}

std::string_view LeftCharacters(std::string_view text, size_t count) {
  size_t at = 0;
  while (count-- > 0 && at < text.size()) at = NextCharacter(text, at);
  return text.substr(0, at);
}

std::string_view RightCharacters(std::string_view text, size_t count) {
  size_t at = text.size();
  while (count-- > 0 && at > 0) {
    --at;
    while (at > 0 && IsContinuation(text[at])) --at;
  }
  return text.substr(at);
}

std::string_view MidCharacters(std::string_view text, size_t first, size_t count) {
  const size_t skipped = LeftCharacters(text, first == 0 ? 0 : first - 1).size();
  return LeftCharacters(text.substr(skipped), count);
}

std::string_view TrimBlanks(std::string_view text) {
  const size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view by) {
  if (what.empty()) return std::string(text);
  std::string result;
  size_t from = 0;
  for (size_t at = text.find(what); at != std::string_view::npos; at = text.find(what, from)) {
    result.append(text.substr(from, at - from)).append(by);
    from = at + what.size();
  }
  return result.append(text.substr(from));
}

std::string OneLine(std::string_view text, std::string_view instead_of_breaks) {
  return ReplaceAll(ReplaceAll(text, "\r", ""), "\n", instead_of_breaks);
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  size_t from = 0;
  for (size_t at = text.find(separator); at != std::string_view::npos; at = text.find(separator, from)) {
    pieces.push_back(text.substr(from, at - from));
    from = at + 1;
  }
  pieces.push_back(text.substr(from));
  return pieces;
}

std::string AsciiLower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = AsciiLower(c);
  return lower;
}

bool EqualsIgnoringCase(std::string_view left, std::string_view right) {
  return left.size() == right.size() && std::equal(left.begin(), left.end(), right.begin(),
                                                   [](char a, char b) { return AsciiLower(a) == AsciiLower(b); });
}

}  // namespace stockbook::base
