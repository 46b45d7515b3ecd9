// SPDX-License-Identifier: MIT
#include "databases/dialect/like_pattern.h"

#include "base/text.h"

namespace stockbook::databases {
namespace {

unsigned char Fold(char c) { return static_cast<unsigned char>(base::AsciiLower(c)); }

// The character at the front as one comparable number, and its length in bytes.
struct Character {
  uint32_t code = 0;
  size_t length = 0;
};
Character FrontCharacter(std::string_view text) {
  Character front{Fold(text.front()), 1};
  while (front.length < text.size() && front.length < 4 &&
         (static_cast<unsigned char>(text[front.length]) & 0xC0) == 0x80) {
    front.code = front.code << 8 | static_cast<unsigned char>(text[front.length++]);
  }
  return front;
}

bool IsAny(char c, Wildcards wildcards) { return c == '%' || (c == '*' && wildcards == Wildcards::kDesktop); }
bool IsOne(char c, Wildcards wildcards) { return c == '_' || (c == '?' && wildcards == Wildcards::kDesktop); }

// Whether a character is in the class between '[' and ']'.
bool InClass(std::string_view members, uint32_t code, Wildcards wildcards) {
  const char negation = wildcards == Wildcards::kDesktop ? '!' : '^';
  const bool negated = members.size() > 1 && members.front() == negation;
  if (negated) members.remove_prefix(1);
  bool found = false;
  while (!members.empty() && !found) {
    const Character low = FrontCharacter(members);
    members.remove_prefix(low.length);
    Character high = low;
    if (members.size() > 1 && members.front() == '-') {
      high = FrontCharacter(members.substr(1));
      members.remove_prefix(1 + high.length);
    }
    found = low.code <= code && code <= high.code;
  }
  return found != negated;
}

// One element of the pattern against one character; how many bytes of the pattern it takes, or 0 where they differ.
size_t MatchOne(std::string_view pattern, uint32_t code, Wildcards wildcards) {
  const char c = pattern.front();
  if (IsOne(c, wildcards)) return 1;
  if (c == '#' && wildcards == Wildcards::kDesktop) return code >= '0' && code <= '9' ? 1 : 0;
  if (c == '[') {
    const size_t end = pattern.find(']', 2);
    if (end != std::string_view::npos) return InClass(pattern.substr(1, end - 1), code, wildcards) ? end + 1 : 0;
  }
  const Character wanted = FrontCharacter(pattern);
  return wanted.code == code ? wanted.length : 0;
}

}  // namespace

bool MatchesLike(std::string_view text, std::string_view pattern, Wildcards wildcards) {
  size_t text_at = 0;
  size_t pattern_at = 0;
  // Where to continue when the piece after the last "any text" wildcard does not match: one character further.
  size_t retry_text = std::string_view::npos;
  size_t retry_pattern = 0;
  while (text_at < text.size()) {
    if (pattern_at < pattern.size() && IsAny(pattern[pattern_at], wildcards)) {
      retry_pattern = ++pattern_at;
      retry_text = text_at;
      continue;
    }
    const Character front = FrontCharacter(text.substr(text_at));
    const size_t taken = pattern_at < pattern.size() ? MatchOne(pattern.substr(pattern_at), front.code, wildcards) : 0;
    if (taken > 0) {
      pattern_at += taken;
      text_at += front.length;
      continue;
    }
    if (retry_text == std::string_view::npos) return false;
    pattern_at = retry_pattern;
    retry_text += FrontCharacter(text.substr(retry_text)).length;
    text_at = retry_text;
  }
  while (pattern_at < pattern.size() && IsAny(pattern[pattern_at], wildcards)) ++pattern_at;
  return pattern_at == pattern.size();
}

}  // namespace stockbook::databases
