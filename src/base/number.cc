// SPDX-License-Identifier: MIT
#include "base/number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "base/decimal_text.h"
#include "base/digits.h"
#include "base/text.h"

namespace stockbook::base {
namespace {

// digits d1..dn and exponent e of d1.d2...dn x 10^e, as "1E+15" when it does not fit in plain decimals.
std::string Compose(bool negative, std::string_view digits, int exponent) {
  std::string text = negative ? "-" : "";
  const int count = static_cast<int>(digits.size());
  const int decimals = std::max(0, count - 1 - exponent);
  if (exponent >= kSignificantDigits || decimals > kSignificantDigits) {
    text += digits.substr(0, 1);
    if (count > 1) text.append(".").append(digits.substr(1));
    return text + (exponent < 0 ? "E-" : "E+") + ZeroPadded(std::abs(exponent), 2);
  }
  if (exponent < 0) return text + "0." + std::string(static_cast<size_t>(-exponent - 1), '0') + std::string(digits);
  if (count <= exponent + 1)
    return text + std::string(digits) + std::string(static_cast<size_t>(exponent + 1 - count), '0');
  const auto whole = static_cast<size_t>(exponent + 1);
  return text + std::string(digits.substr(0, whole)) + "." + std::string(digits.substr(whole));
}

// Up to 15 digits and a power of ten up to 10^22 are doubles without rounding, so one operation on them gives the
// nearest double; nothing for longer numbers.
std::optional<double> QuickDouble(const DecimalText& parts) {
  constexpr auto kMostExact = static_cast<int64_t>(kDoublePowersOfTen.size()) - 1;
  const int64_t power = parts.exponent - static_cast<int64_t>(parts.fraction.size());
  if (parts.whole.size() + parts.fraction.size() > kSignificantDigits || std::abs(power) > kMostExact)
    return std::nullopt;
  int64_t digits = 0;
  for (const std::string_view part : {parts.whole, parts.fraction}) {
    for (const char c : part) {
      if (c != ',') digits = digits * 10 + (c - '0');
    }
  }
  const auto size = static_cast<double>(digits);
  const double factor = kDoublePowersOfTen[static_cast<size_t>(std::abs(power))];
  const double number = power < 0 ? size / factor : size * factor;
  return parts.negative ? -number : number;
}

}  // namespace

std::string NumberText(double value) {
  if (!std::isfinite(value)) return {};
  if (value == 0) return "0";
  if (value == std::trunc(value) && std::fabs(value) < 1e15) return std::to_string(static_cast<int64_t>(value));
  std::array<char, 40> buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value),
                                          std::chars_format::scientific, kSignificantDigits - 1);
  if (error != std::errc()) return {};
  std::string_view text(buffer.data(), static_cast<size_t>(end - buffer.data()));
  const size_t power_at = text.find('e');
  const size_t power_digits = power_at + (text[power_at + 1] == '+' ? 2 : 1);
  int exponent = 0;
  std::from_chars(text.data() + power_digits, end, exponent);
  std::string digits(text.substr(0, 1));
  digits += text.substr(2, power_at - 2);
  digits.erase(digits.find_last_not_of('0') + 1);
  return Compose(value < 0, digits, exponent);
}

std::optional<QuickNumber> QuickDigits(double value) {
  constexpr double kLeast = 1;
  constexpr double kMost = 1e14;
  // Scaling loses up to 1/16: half of the last bit of a number below 2^50.
  constexpr double kNearMiddle = 0.07;
  const double size = std::fabs(value);
  if (!(size >= kLeast && size < kMost)) return std::nullopt;
  double power = 1e14;
  int decimals = kSignificantDigits - 1;
  for (double whole = 10; whole <= size; whole *= 10, --decimals) power /= 10;
  const double scaled = size * power;
  auto units = static_cast<int64_t>(scaled);
  const double rest = scaled - static_cast<double>(units);
  if (std::fabs(rest - 0.5) < kNearMiddle) return std::nullopt;
  if (rest > 0.5) ++units;
  return QuickNumber{value < 0 ? -units : units, decimals};
}

std::optional<double> ParseNumber(std::string_view text) {
  const auto parts = ReadDecimal(text, Grouping::kCommas);
  if (!parts) return std::nullopt;
  if (const auto quick = QuickDouble(*parts)) return quick;
  std::string plain(TrimBlanks(text));
  std::erase(plain, ',');
  if (plain.front() == '+') plain.erase(0, 1);
  double number = 0;
  const auto error = std::from_chars(plain.data(), plain.data() + plain.size(), number).ec;
  return error == std::errc() ? std::optional(number) : std::nullopt;
}

std::optional<int64_t> ParseInteger(std::string_view text) {
  text = TrimBlanks(text);
  // One sign; from_chars itself takes a minus.
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  int64_t number = 0;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || rest != text.data() + text.size() || text.empty()) return std::nullopt;
  return number;
}

double NumericValue(std::string_view text) { return ParseNumber(text).value_or(0.0); }

double SafeDivide(double numerator, double denominator) {
  if (denominator == 0 || !std::isfinite(numerator) || !std::isfinite(denominator)) return 0;
  const double quotient = numerator / denominator;
  return std::isfinite(quotient) ? quotient : 0;
}

}  // namespace stockbook::base
