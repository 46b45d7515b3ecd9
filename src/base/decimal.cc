// SPDX-License-Identifier: MIT
#include "base/decimal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>

#include "base/digits.h"
#include "base/number.h"
#include "stockbook/base/money.h"

namespace stockbook::base {

std::optional<int64_t> ShortDecimalUnits(double number) {
  constexpr auto kScale = static_cast<double>(Money::kScale);
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
  if (const auto units = ShortDecimalUnits(number)) return FromScaled(*units, Money::kDecimals);
  std::array<char, 40> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::scientific,
                                 kSignificantDigits - 1)
                       .ptr;
  return Parse(std::string_view(buffer.data(), static_cast<size_t>(end - buffer.data())));
}

std::optional<Decimal> Decimal::Parse(std::string_view text) {
  if (!ParseNumber(text)) return std::nullopt;
  return FromText(*ReadDecimal(text, Grouping::kCommas));
}

Decimal Decimal::FromText(const DecimalText& text) {
  Decimal decimal;
  decimal.negative = text.negative;
  std::copy_if(text.whole.begin(), text.whole.end(), std::back_inserter(decimal.digits), IsDigit);
  decimal.whole = static_cast<int>(static_cast<int64_t>(decimal.digits.size()) + text.exponent);
  decimal.digits += text.fraction;
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

Decimal Decimal::Shown(int power, int decimals) const {
  Decimal shown = *this;
  if (!IsZero()) shown.whole += power;
  shown.RoundTo(decimals);
  if (shown.IsZero()) shown.negative = false;
  return shown;
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

}  // namespace stockbook::base
