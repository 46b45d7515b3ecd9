// SPDX-License-Identifier: MIT
#include "com/ado/decimal_digits.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace stockbook::com {

std::optional<int64_t> UnitsOfDecimal(const DECIMAL& decimal, int decimals) {
  if (decimal.scale > decimals || decimal.Hi32 != 0) return std::nullopt;
  constexpr auto kMost = static_cast<uint64_t>(INT64_MAX);
  uint64_t units = decimal.Lo64;
  for (int place = decimal.scale; place < decimals; ++place) {
    if (units > kMost / 10) return std::nullopt;
    units *= 10;
  }
  if (units > kMost) return std::nullopt;
  return (decimal.sign & DECIMAL_NEG) != 0 ? -static_cast<int64_t>(units) : static_cast<int64_t>(units);
}

std::string DigitsOfDecimal(const DECIMAL& decimal) {
  std::array<uint32_t, 3> words = {decimal.Hi32, static_cast<uint32_t>(decimal.Lo64 >> 32),
                                   static_cast<uint32_t>(decimal.Lo64)};
  const auto is_zero = [&words] { return words[0] == 0 && words[1] == 0 && words[2] == 0; };
  std::string backwards;
  // One digit before the point at least.
  while (!is_zero() || backwards.size() <= decimal.scale) {
    uint64_t rest = 0;
    for (uint32_t& word : words) {
      rest = rest << 32 | word;
      word = static_cast<uint32_t>(rest / 10);
      rest %= 10;
    }
    backwards += static_cast<char>('0' + rest);
  }
  if (decimal.scale > 0) backwards.insert(decimal.scale, 1, '.');
  if ((decimal.sign & DECIMAL_NEG) != 0) backwards += '-';
  std::reverse(backwards.begin(), backwards.end());
  return backwards;
}

}  // namespace stockbook::com
