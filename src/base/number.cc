// SPDX-License-Identifier: MIT
#include "base/number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "base/text.h"

namespace stockbook::base {
namespace {

constexpr int kSignificantDigits = 15;

// digits d1..dn and exponent e of d1.d2...dn x 10^e, as "1E+15" when it does not fit in plain decimals.
std::string Compose(bool negative, std::string_view digits, int exponent) {
  std::string text = negative ? "-" : "";
  const int count = static_cast<int>(digits.size());
  const int decimals = std::max(0, count - 1 - exponent);
  if (exponent >= kSignificantDigits || decimals > kSignificantDigits) {
    text += digits.substr(0, 1);
    if (count > 1) text.append(".").append(digits.substr(1));
    const std::string power = std::to_string(std::abs(exponent));
    return text + (exponent < 0 ? "E-" : "E+") + (power.size() < 2 ? "0" : "") + power;
  }
  if (exponent < 0) return text + "0." + std::string(static_cast<size_t>(-exponent - 1), '0') + std::string(digits);
  if (count <= exponent + 1)
    return text + std::string(digits) + std::string(static_cast<size_t>(exponent + 1 - count), '0');
  const auto whole = static_cast<size_t>(exponent + 1);
  return text + std::string(digits.substr(0, whole)) + "." + std::string(digits.substr(whole));
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
  text = TrimBlanks(text);
  std::string plain;
  if (text.find(',') != std::string_view::npos) {
    // Grouping commas are read between digits of the whole part only.
    const size_t point = std::min(text.find_first_of(".eE"), text.size());
    if (text.substr(point).find(',') != std::string_view::npos) return std::nullopt;
    for (size_t at = 0; at < text.size(); ++at) {
      if (text[at] != ',') {
        plain += text[at];
        continue;
      }
      const bool between = at > 0 && at + 1 < text.size() && text[at - 1] >= '0' && text[at - 1] <= '9' &&
                           text[at + 1] >= '0' && text[at + 1] <= '9';
      if (!between) return std::nullopt;
    }
    text = plain;
  }
  if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
    if (!text.empty() && text.front() == '-') return std::nullopt;
  }
  const size_t first = !text.empty() && text.front() == '-' ? 1 : 0;
  if (first >= text.size() || !((text[first] >= '0' && text[first] <= '9') || text[first] == '.')) return std::nullopt;
  double number = 0;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || rest != text.data() + text.size()) return std::nullopt;
  return number;
}

std::optional<int64_t> ParseInteger(std::string_view text) {
  text = TrimBlanks(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
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
