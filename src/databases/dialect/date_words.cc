// SPDX-License-Identifier: MIT
#include "databases/dialect/date_words.h"

#include <algorithm>

namespace stockbook::databases {
namespace {

// The engine's word for a run of one letter, or nothing.
std::string_view WordOf(char letter, size_t count, char last_letter, const DateWords& words) {
  if (letter == 'y') return count == 4 ? words.year : std::string_view();
  if (count != 2) return {};
  switch (letter) {
    case 'm':
      return last_letter == 'h' ? words.minute : words.month;
    case 'd':
      return words.day;
    case 'h':
      return words.hour;
    case 'n':
      return words.minute;
    case 's':
      return words.second;
    default:
      return {};
  }
}

// The piece of a pattern that is shown as it stands, at the front: between quotes, after a backslash, or a character
// that is no letter. Its length in the pattern, or 0.
size_t TakeShown(std::string_view pattern, std::string& shown) {
  const char c = pattern.front();
  if (c == '"') {
    const size_t end = pattern.find('"', 1);
    if (end == std::string_view::npos) return 0;
    shown += pattern.substr(1, end - 1);
    return end + 1;
  }
  if (c == '\\' && pattern.size() > 1) {
    shown += pattern[1];
    return 2;
  }
  const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '0' || c == '#' || c == '@';
  if (letter || c == '\\') return 0;
  shown += c;
  return 1;
}

}  // namespace

std::string EnginePattern(std::string_view pattern, const DateWords& words) {
  std::string result;
  std::string shown;
  char last_letter = ' ';
  const auto end_shown = [&] {
    if (!shown.empty()) result += '"' + shown + '"';
    shown.clear();
  };
  while (!pattern.empty()) {
    const size_t taken = TakeShown(pattern, shown);
    if (taken > 0) {
      pattern.remove_prefix(taken);
      continue;
    }
    end_shown();
    const char letter = pattern.front();
    const size_t count = std::min(pattern.find_first_not_of(letter), pattern.size());
    const std::string_view word = WordOf(letter, count, last_letter, words);
    if (word.empty()) return {};
    result += word;
    last_letter = letter;
    pattern.remove_prefix(count);
  }
  end_shown();
  return last_letter == ' ' ? std::string() : result;
}

std::string_view DesktopPatternOfStyle(int64_t style) {
  switch (style) {
    case 23:
      return "yyyy-mm-dd";
    case 20:
    case 120:
      return "yyyy-mm-dd hh:nn:ss";
    case 21:
    case 25:
    case 121:
      return "yyyy-mm-dd hh:nn:ss\".000\"";
    case 126:
      return "yyyy-mm-dd\"T\"hh:nn:ss";
    case 102:
      return "yyyy.mm.dd";
    case 111:
      return "yyyy/mm/dd";
    case 112:
      return "yyyymmdd";
    case 8:
    case 108:
      return "hh:nn:ss";
    default:
      return {};
  }
}

}  // namespace stockbook::databases
