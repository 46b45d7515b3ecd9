// SPDX-License-Identifier: MIT
#include "stockbook/import/import_decimal.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string>

#include "base/decimal_text.h"
#include "base/text.h"

namespace stockbook::app {
namespace {

constexpr int kMostDigits = 15;
constexpr int64_t kLargestQuantity = 999'999'999;

}  // namespace

std::optional<ScaledDecimal> ParseDecimal(std::string_view text) {
  constexpr size_t kMostLength = 200;
  constexpr int64_t kMostExponent = 100;
  std::string spelled(base::TrimBlanks(text));
  if (spelled.size() > kMostLength) return std::nullopt;
  // An exponent may have both signs here: "1e+-2".
  if (const size_t signs = spelled.find("+-"); signs != 0 && signs != std::string::npos) spelled.erase(signs, 1);
  const auto parts = base::ReadDecimal(spelled, base::Grouping::kNone);
  if (!parts || std::abs(parts->exponent) > kMostExponent) return std::nullopt;
  std::string digits(parts->whole);
  digits += parts->fraction;
  int scale = static_cast<int>(static_cast<int64_t>(parts->fraction.size()) - parts->exponent);
  digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
  while (!digits.empty() && digits.back() == '0') digits.pop_back(), --scale;
  if (digits.empty()) return ScaledDecimal{};
  if (scale < 0) digits.append(static_cast<size_t>(-scale), '0'), scale = 0;
  if (digits.size() > kMostDigits || scale > kMostDigits) return std::nullopt;
  int64_t number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return ScaledDecimal{parts->negative ? -number : number, scale};
}

std::optional<Quantity> QuantityOf(ScaledDecimal decimal) {
  if (decimal.scale > Quantity::kDecimals) return std::nullopt;
  // 15 digits times 10^6 can exceed 64 bits, so the size is checked on the way.
  int64_t millionths = decimal.digits;
  for (int place = decimal.scale; place < Quantity::kDecimals; ++place) {
    if (std::abs(millionths) > kLargestQuantity * Quantity::kScale) return std::nullopt;
    millionths *= 10;
  }
  if (std::abs(millionths) > kLargestQuantity * Quantity::kScale) return std::nullopt;
  return Quantity::FromMillionths(millionths);
}

}  // namespace stockbook::app
