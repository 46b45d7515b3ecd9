// SPDX-License-Identifier: MIT
#include "base/money.h"

#include <array>
#include <charconv>
#include <cmath>

namespace stockbook::base {
namespace {

constexpr int kDecimals = 4;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view TrimmedNumber(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

// A decimal number taken apart: digits without the point, and how many of them stand behind it.
struct Decimal {
  bool negative = false;
  std::string_view whole;
  std::string_view fraction;
  int exponent = 0;
};

std::optional<Decimal> TakeApart(std::string_view text) {
  text = TrimmedNumber(text);
  Decimal parts;
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
    parts.negative = text.front() == '-';
    text.remove_prefix(1);
  }
  size_t end = 0;
  while (end < text.size() && IsDigit(text[end])) ++end;
  parts.whole = text.substr(0, end);
  text.remove_prefix(end);
  if (!text.empty() && text.front() == '.') {
    end = 1;
    while (end < text.size() && IsDigit(text[end])) ++end;
    parts.fraction = text.substr(1, end - 1);
    text.remove_prefix(end);
  }
  if (parts.whole.empty() && parts.fraction.empty()) return std::nullopt;
  if (text.empty()) return parts;
  if (text.front() != 'e' && text.front() != 'E') return std::nullopt;
  text.remove_prefix(1);
  if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
    if (!text.empty() && text.front() == '-') return std::nullopt;
  }
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), parts.exponent);
  if (error != std::errc() || rest != text.data() + text.size()) return std::nullopt;
  return parts;
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
  const auto parts = TakeApart(text);
  if (!parts) return std::nullopt;
  const auto digit_count = static_cast<int64_t>(parts->whole.size() + parts->fraction.size());
  const int64_t point = static_cast<int64_t>(parts->whole.size()) + parts->exponent;
  const auto digit_at = [&](int64_t index) {
    if (index < 0 || index >= digit_count) return 0;
    const auto at = static_cast<size_t>(index);
    return (at < parts->whole.size() ? parts->whole[at] : parts->fraction[at - parts->whole.size()]) - '0';
  };
  int64_t first = 0;
  while (first < digit_count && digit_at(first) == 0) ++first;
  if (first == digit_count) return Money();
  const int64_t last = point + kDecimals;  // one behind the last digit that is kept
  if (last - first > 19) return std::nullopt;
  int64_t units = 0;
  for (int64_t index = first; index < last; ++index) {
    if (!PushDigit(units, digit_at(index))) return std::nullopt;
  }
  const int next = last >= first ? digit_at(last) : 0;
  bool beyond = false;
  for (int64_t index = std::max(last, int64_t{-1}) + 1; index < digit_count && !beyond; ++index)
    beyond = digit_at(index) != 0;
  const bool odd = units % 2 != 0;
  if (next > 5 || (next == 5 && (beyond || odd))) {
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
