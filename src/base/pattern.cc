// SPDX-License-Identifier: MIT
#include "base/pattern.h"

#include <algorithm>

#include "base/text.h"

namespace stockbook::base {

std::vector<PatternPiece> ReadPattern(std::string_view pattern) {
  std::vector<PatternPiece> pieces;
  pieces.reserve(pattern.size());
  while (!pattern.empty()) {
    const char first = pattern.front();
    size_t length = 1;
    if (first == '"') {
      const size_t end = std::min(pattern.find('"', 1), pattern.size());
      pieces.push_back({0, std::string(pattern.substr(1, end - 1))});
      length = std::min(end + 1, pattern.size());
    } else if (first == '\\') {
      const std::string_view next = LeftCharacters(pattern.substr(1), 1);
      pieces.push_back({next.empty() ? first : '\0', std::string(next)});
      length += next.size();
    } else {
      length = LeftCharacters(pattern, 1).size();
      const bool ascii = static_cast<unsigned char>(first) < 0x80;
      if (ascii) length = 1;
      pieces.push_back({ascii ? first : '\0', std::string(pattern.substr(0, length))});
    }
    pattern.remove_prefix(length);
  }
  return pieces;
}

}  // namespace stockbook::base
