// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "stockbook/base/api.h"

namespace stockbook::base {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

inline constexpr int kMostPower = 18;

// 10^0 to 10^18, all that 63 bits hold.
inline constexpr std::array<uint64_t, kMostPower + 1> kPowersOfTen = [] {
  std::array<uint64_t, kMostPower + 1> powers{};
  uint64_t power = 1;
  for (uint64_t& each : powers) {
    each = power;
    power *= 10;
  }
  return powers;
}();

// 10^0 to 10^22, the powers that a double holds exactly.
inline constexpr std::array<double, 23> kDoublePowersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                              1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                              1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// The digits of a number that is not negative, with zeros in front up to `least` of them.
STOCKBOOK_API std::string ZeroPadded(int64_t number, size_t least);

}  // namespace stockbook::base
