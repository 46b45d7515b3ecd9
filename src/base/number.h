// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "stockbook/base/api.h"

namespace stockbook::base {

// What a double keeps of any decimal.
inline constexpr int kSignificantDigits = 15;

// The default text of a number: the shortest of at most kSignificantDigits that stands for it, plain decimal if that
// needs at most 15 digits on either side of the point, otherwise with an exponent ("1E+15"). NaN and infinities have no
// text and give "".
STOCKBOOK_API std::string NumberText(double value);

// units / 10^decimals, at most 15 digits and decimals.
struct QuickNumber {
  int64_t units = 0;
  int decimals = 0;
};
// The digits of NumberText, with any zeros at the end, where a few machine instructions find them; nothing for small
// and large numbers and a few others.
STOCKBOOK_API std::optional<QuickNumber> QuickDigits(double value);

// The double nearest to the number that a text spells, as ReadDecimal reads it with grouping commas. Nothing when it is
// spelled in any other way, or is out of range.
STOCKBOOK_API std::optional<double> ParseNumber(std::string_view text);

// The whole number that a text spells exactly, or nothing.
STOCKBOOK_API std::optional<int64_t> ParseInteger(std::string_view text);

// A grid's reading of a text as a number: ParseNumber, or 0.
STOCKBOOK_API double NumericValue(std::string_view text);

// numerator / denominator, or 0 when the denominator is 0 or either is not a finite number; never fails.
STOCKBOOK_API double SafeDivide(double numerator, double denominator);

}  // namespace stockbook::base
