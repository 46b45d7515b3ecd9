// SPDX-License-Identifier: MIT
#include "stockbook/import/import_decimal.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string>

#include "base/text.h"

namespace stockbook::app {
namespace {

constexpr int kMostDigits = 15;
constexpr int kQuantityDecimals = 6;
constexpr int64_t kLargestQuantity = 999'999'999;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Moves leading digits to `digits`; returns their count.
int TakeDigits(std::string_view& text, std::string& digits) {
  size_t count = 0;
  while (count < text.size() && IsDigit(text[count])) ++count;
  digits.append(text.substr(0, count));
  text.remove_prefix(count);
  return static_cast<int>(count);
}

// The exponent after "e"; nothing if there is none or it is absurdly large.
std::optional<int> TakeExponent(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  if (text.empty() || (!IsDigit(text.front()) && text.front() != '-')) return std::nullopt;
  int exponent = 0;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), exponent);
  if (error != std::errc() || rest != text.data() + text.size() || std::abs(exponent) > 100) return std::nullopt;
  return exponent;
}

}  // namespace

std::optional<ScaledDecimal> ParseDecimal(std::string_view text) {
  text = base::TrimBlanks(text);
  if (text.size() > 200) return std::nullopt;
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  std::string digits;
  int count = TakeDigits(text, digits);
  int scale = 0;
  if (text.starts_with('.')) {
    text.remove_prefix(1);
    scale = TakeDigits(text, digits);
    count += scale;
  }
  if (count == 0) return std::nullopt;
  if (text.starts_with('e') || text.starts_with('E')) {
    const auto exponent = TakeExponent(text.substr(1));
    if (!exponent) return std::nullopt;
    scale -= *exponent;
  } else if (!text.empty()) {
    return std::nullopt;
  }
  digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
  while (!digits.empty() && digits.back() == '0') digits.pop_back(), --scale;
  if (digits.empty()) return ScaledDecimal{};
  if (scale < 0) digits.append(static_cast<size_t>(-scale), '0'), scale = 0;
  if (digits.size() > kMostDigits || scale > kMostDigits) return std::nullopt;
  int64_t number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return ScaledDecimal{negative ? -number : number, scale};
}

std::optional<Quantity> QuantityOf(ScaledDecimal decimal) {
  if (decimal.scale > kQuantityDecimals) return std::nullopt;
  // 15 digits times 10^6 can exceed 64 bits, so the size is checked on the way.
  int64_t millionths = decimal.digits;
  for (int place = decimal.scale; place < kQuantityDecimals; ++place) {
    if (std::abs(millionths) > kLargestQuantity * Quantity::kScale) return std::nullopt;
    millionths *= 10;
  }
  if (std::abs(millionths) > kLargestQuantity * Quantity::kScale) return std::nullopt;
  return Quantity::FromMillionths(millionths);
}

}  // namespace stockbook::app
