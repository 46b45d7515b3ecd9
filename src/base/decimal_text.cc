// SPDX-License-Identifier: MIT
#include "base/decimal_text.h"

#include <algorithm>

#include "base/digits.h"
#include "base/text.h"

namespace stockbook::base {
namespace {

bool TakeSign(std::string_view& text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  return negative;
}

// The digits at the front, cut off.
std::string_view TakeDigits(std::string_view& text, Grouping grouping) {
  size_t end = 0;
  while (end < text.size()) {
    const bool groups = grouping == Grouping::kCommas && text[end] == ',' && end > 0 && IsDigit(text[end - 1]) &&
                        end + 1 < text.size() && IsDigit(text[end + 1]);
    if (!groups && !IsDigit(text[end])) break;
    ++end;
  }
  const std::string_view digits = text.substr(0, end);
  text.remove_prefix(end);
  return digits;
}

// The number after the "e", which must be all that is left.
std::optional<int64_t> ReadExponent(std::string_view text) {
  constexpr int64_t kMost = 10'000'000'000;
  const bool negative = TakeSign(text);
  if (text.empty()) return std::nullopt;
  int64_t exponent = 0;
  for (const char c : text) {
    if (!IsDigit(c)) return std::nullopt;
    exponent = std::min(exponent * 10 + (c - '0'), kMost);
  }
  return negative ? -exponent : exponent;
}

}  // namespace

std::optional<DecimalText> ReadDecimal(std::string_view text, Grouping grouping) {
  text = TrimBlanks(text);
  DecimalText parts;
  parts.negative = TakeSign(text);
  parts.whole = TakeDigits(text, grouping);
  if (text.starts_with('.')) {
    text.remove_prefix(1);
    parts.fraction = TakeDigits(text, Grouping::kNone);
  }
  if (parts.whole.empty() && parts.fraction.empty()) return std::nullopt;
  if (text.empty()) return parts;
  if (text.front() != 'e' && text.front() != 'E') return std::nullopt;
  const auto exponent = ReadExponent(text.substr(1));
  if (!exponent) return std::nullopt;
  parts.exponent = *exponent;
  return parts;
}

}  // namespace stockbook::base
