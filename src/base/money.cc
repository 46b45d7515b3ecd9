// SPDX-License-Identifier: MIT
#include "stockbook/base/money.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <string>

#include "base/decimal_text.h"
#include "base/digits.h"

namespace stockbook::base {
namespace {

// "-123.45", as stores write amounts, in a fraction of the time; nothing for any other spelling.
std::optional<Money> ParsePlainMoney(std::string_view text) {
  constexpr size_t kMostLength = 18;
  constexpr size_t kSafeDigits = 13;
  if (text.size() > kMostLength) return std::nullopt;
  const bool negative = text.starts_with('-');
  const size_t first = negative ? 1 : 0;
  size_t at = first;
  int64_t units = 0;
  for (; at < text.size() && IsDigit(text[at]); ++at) units = units * 10 + (text[at] - '0');
  if (at == first || at - first > kSafeDigits) return std::nullopt;
  int decimals = 0;
  if (at < text.size() && text[at] == '.') {
    for (++at; at < text.size() && decimals < Money::kDecimals && IsDigit(text[at]); ++at, ++decimals)
      units = units * 10 + (text[at] - '0');
  }
  if (at != text.size()) return std::nullopt;
  for (; decimals < Money::kDecimals; ++decimals) units *= 10;
  return Money::FromUnits(negative ? -units : units);
}

// Appends a digit to a signed count of units; false when it leaves the range. Counts are kept negative because the
// negative range is the larger one.
bool PushDigit(int64_t& negative_units, int digit) {
  return !__builtin_mul_overflow(negative_units, int64_t{10}, &negative_units) &&
         !__builtin_sub_overflow(negative_units, static_cast<int64_t>(digit), &negative_units);
}

}  // namespace

void Money::ThrowOverflow() {
  throw ArithmeticError(
      "金额超出范围：金额必须在 -922337203685477.5808 与 922337203685477.5807 之间，请检查单据的金额。");
}

Money Money::FromInteger(int64_t whole) {
  int64_t units = 0;
  if (__builtin_mul_overflow(whole, kScale, &units)) ThrowOverflow();
  return Money(units);
}

Money Money::FromDouble(double value) {
  if (!std::isfinite(value)) ThrowOverflow();
  // The double stands for the shortest decimal that reads back as it; that decimal is what gets rounded.
  std::array<char, 64> digits{};
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  const auto money = error == std::errc()
                         ? Parse(std::string_view(digits.data(), static_cast<size_t>(end - digits.data())))
                         : std::nullopt;
  if (!money) ThrowOverflow();
  return *money;
}

std::optional<Money> Money::Parse(std::string_view text) {
  if (const auto plain = ParsePlainMoney(text)) return plain;
  auto parts = ReadDecimal(text, Grouping::kCommas);
  using Exponents = std::numeric_limits<int32_t>;
  if (!parts || parts->exponent < Exponents::min() || parts->exponent > Exponents::max()) return std::nullopt;
  std::string ungrouped;
  if (parts->whole.find(',') != std::string_view::npos) {
    std::copy_if(parts->whole.begin(), parts->whole.end(), std::back_inserter(ungrouped), IsDigit);
    parts->whole = ungrouped;
  }
  const auto whole_count = static_cast<int64_t>(parts->whole.size());
  const int64_t digit_count = whole_count + static_cast<int64_t>(parts->fraction.size());
  const auto digit_at = [&](int64_t index) {
    if (index < 0 || index >= digit_count) return 0;
    return (index < whole_count ? parts->whole[static_cast<size_t>(index)]
                                : parts->fraction[static_cast<size_t>(index - whole_count)]) -
           '0';
  };
  int64_t first = 0;
  while (first < digit_count && digit_at(first) == 0) ++first;
  if (first == digit_count) return Money();
  const int64_t end = whole_count + parts->exponent + kDecimals;  // of the digits that are kept
  if (end - first > 19) return std::nullopt;
  int64_t units = 0;
  for (int64_t index = first; index < end; ++index) {
    if (!PushDigit(units, digit_at(index))) return std::nullopt;
  }
  const int next = end >= first ? digit_at(end) : 0;
  bool beyond = false;
  for (int64_t index = std::max(end, int64_t{-1}) + 1; index < digit_count && !beyond; ++index)
    beyond = digit_at(index) != 0;
  if (next > 5 || (next == 5 && (beyond || units % 2 != 0))) {
    if (__builtin_sub_overflow(units, int64_t{1}, &units)) return std::nullopt;
  }
  if (parts->negative) return Money(units);
  if (units == INT64_MIN) return std::nullopt;
  return Money(-units);
}

std::string Money::Text() const {
  std::array<char, 24> digits{};
  const bool negative = units_ < 0;
  uint64_t rest = negative ? ~static_cast<uint64_t>(units_) + 1 : static_cast<uint64_t>(units_);
  char* at = digits.data() + digits.size();
  bool significant = false;
  for (int place = 0; place < kDecimals; ++place, rest /= 10) {
    const auto digit = static_cast<char>('0' + rest % 10);
    significant = significant || digit != '0';
    if (significant) *--at = digit;
  }
  if (significant) *--at = '.';
  do {
    *--at = static_cast<char>('0' + rest % 10);
    rest /= 10;
  } while (rest != 0);
  if (negative) *--at = '-';
  return std::string(at, static_cast<size_t>(digits.data() + digits.size() - at));
}

}  // namespace stockbook::base
