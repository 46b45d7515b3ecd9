// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace stockbook::app {

// What separates whole numbers from their decimals in a table.
enum class DecimalMark {
  kPoint,
  kComma,
  kEither,  // each number tells by its spelling
};

// A number as people write it into tables: currency signs, thousands separators, wide digits, and brackets instead of
// a minus. `plain` is the number with nothing but a sign, digits, a point and an exponent, or, if it is none, the text
// as it was. Where the mark may be either, a comma before three digits may be both ("1,234"): then it is ambiguous.
struct ImportNumber {
  std::string plain;
  bool is_ambiguous = false;
};

ImportNumber PlainNumber(std::string_view text, DecimalMark mark);

// The text without blanks of any width at its ends.
std::string_view TrimWideBlanks(std::string_view text);
// The wide forms of digits, letters and signs as those of ASCII.
std::string NarrowText(std::string_view text);

}  // namespace stockbook::app
