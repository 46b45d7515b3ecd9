// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "stockbook/base/api.h"

namespace stockbook::base {

// One character of a display pattern ("#,##0.00", "yyyy年MM月") that may mean something there, or a text that stands
// for itself.
struct PatternPiece {
  char sign = 0;     // the ASCII character; 0 for a text in quotes, a character after a backslash and all others
  std::string text;  // what it shows where it means nothing

  // A place for a digit in a pattern of numbers.
  bool IsPlace() const { return sign == '0' || sign == '#'; }
};

// Takes a pattern apart, its quotes and backslashes resolved. A quote that is not closed reaches to the end; a
// backslash at the very end is a sign that shows nothing.
STOCKBOOK_API std::vector<PatternPiece> ReadPattern(std::string_view pattern);

}  // namespace stockbook::base
