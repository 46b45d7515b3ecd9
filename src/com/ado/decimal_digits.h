// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

namespace stockbook::com {

// An automation decimal, of 96 bits and up to 28 places, as a count of 1/10^decimals, exactly; nothing when it has more
// places than that, or does not fit.
std::optional<int64_t> UnitsOfDecimal(const DECIMAL& decimal, int decimals);

// All of its digits: "-12.50".
std::string DigitsOfDecimal(const DECIMAL& decimal);

}  // namespace stockbook::com
