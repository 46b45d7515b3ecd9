// SPDX-License-Identifier: MIT
#include "sheet/format/decimal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "base/number.h"

namespace stockbook::sheet {
namespace {

constexpr int kSignificantDigits = 15;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::optional<int64_t> ShortDecimalUnits(double number) {
  constexpr double kScale = 10000;
  constexpr double kMost = 1e11;
  if (!(std::fabs(number) < kMost)) return std::nullopt;
  const auto units = static_cast<int64_t>(std::llround(number * kScale));
  return static_cast<double>(units) / kScale == number ? std::optional(units) : std::nullopt;
}

void Decimal::Normalise() {
  const size_t first = digits.find_first_not_of('0');
  if (first == std::string::npos) {
    digits.clear();
    whole = 0;
    return;
  }
  digits.erase(digits.find_last_not_of('0') + 1);
  digits.erase(0, first);
  whole -= static_cast<int>(first);
}

Decimal Decimal::FromInteger(int64_t number) { return FromScaled(number, 0); }

Decimal Decimal::FromScaled(int64_t units, int decimals) {
  Decimal decimal;
  decimal.negative = units < 0;
  const uint64_t size = decimal.negative ? ~static_cast<uint64_t>(units) + 1 : static_cast<uint64_t>(units);
  std::array<char, 24> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), size).ptr;
  decimal.digits.assign(buffer.data(), end);
  decimal.whole = static_cast<int>(decimal.digits.size()) - decimals;
  decimal.Normalise();
  return decimal;
}

std::optional<Decimal> Decimal::FromDouble(double number) {
  if (!std::isfinite(number)) return std::nullopt;
  if (const auto units = ShortDecimalUnits(number)) return FromScaled(*units, kShortDecimals);
  std::array<char, 40> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::scientific,
                                 kSignificantDigits - 1)
                       .ptr;
  return Parse(std::string_view(buffer.data(), static_cast<size_t>(end - buffer.data())));
}

std::optional<Decimal> Decimal::Parse(std::string_view text) {
  if (!base::ParseNumber(text)) return std::nullopt;
  Decimal decimal;
  bool behind_point = false;
  for (size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    if (IsDigit(c)) {
      decimal.digits += c;
      if (!behind_point) ++decimal.whole;
    } else if (c == '.') {
      behind_point = true;
    } else if (c == '-') {
      decimal.negative = true;
    } else if (c == 'e' || c == 'E') {
      at += at + 1 < text.size() && text[at + 1] == '+' ? 2U : 1U;
      int power = 0;
      std::from_chars(text.data() + at, text.data() + text.size(), power);
      decimal.whole += power;
      break;
    }
  }
  decimal.Normalise();
  return decimal;
}

void Decimal::RoundTo(int decimals) {
  const int kept = whole + decimals;
  if (kept >= static_cast<int>(digits.size())) return;
  const bool up = kept >= 0 && digits[static_cast<size_t>(kept)] >= '5';
  digits.resize(static_cast<size_t>(std::max(kept, 0)));
  if (up) {
    int at = kept - 1;
    for (; at >= 0 && digits[static_cast<size_t>(at)] == '9'; --at) digits[static_cast<size_t>(at)] = '0';
    if (at >= 0) {
      ++digits[static_cast<size_t>(at)];
    } else {
      digits.insert(0, 1, '1');
      ++whole;
    }
  }
  Normalise();
}

std::string Decimal::WholeDigits() const {
  if (whole <= 0) return {};
  const auto count = static_cast<size_t>(whole);
  std::string text = digits.substr(0, count);
  text.resize(count, '0');
  return text;
}

std::string Decimal::FractionDigits(int decimals) const {
  const auto count = static_cast<size_t>(decimals);
  std::string text(whole < 0 ? std::min(count, static_cast<size_t>(-whole)) : 0, '0');
  const auto from = static_cast<size_t>(std::max(whole, 0));
  if (from < digits.size() && text.size() < count) text.append(digits, from, count - text.size());
  text.resize(count, '0');
  return text;
}

}  // namespace stockbook::sheet
