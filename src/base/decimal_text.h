// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "stockbook/base/api.h"

namespace stockbook::base {

// Whether commas may group the digits before the point.
enum class Grouping { kNone, kCommas };

// A decimal number as a text spells it, taken apart: (whole.fraction) x 10^exponent. The views point into the text.
// With grouping, `whole` still holds its commas.
struct DecimalText {
  bool negative = false;
  std::string_view whole;
  std::string_view fraction;
  int64_t exponent = 0;
};

// The one reader of decimal numbers: "[+-]digits[.digits][e[+-]digits]" with blanks (U+0020) around it, at least one
// digit before or after the point, and commas only between two digits of the whole part. Any number of digits is read;
// exponents beyond +-10^10 count as 10^10. Nothing for any other text. It checks the spelling alone: what range a
// number must keep to is the caller's rule. O(text), without allocating.
STOCKBOOK_API std::optional<DecimalText> ReadDecimal(std::string_view text, Grouping grouping);

}  // namespace stockbook::base
