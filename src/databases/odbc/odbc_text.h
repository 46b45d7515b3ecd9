// SPDX-License-Identifier: MIT
#pragma once

#include <sqltypes.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace stockbook::databases {

// Wide text as drivers take it: UTF-16 or, where SQLWCHAR has four bytes, UTF-32.
using OdbcWideText = std::vector<SQLWCHAR>;

// How a driver takes names and statements. To one that knows no wide text the driver manager would pass half of each
// character, so that one gets UTF-8 by the narrow functions. Values are wide for all of them.
enum class OdbcLetters { kWide, kNarrow };

// A text for a driver, ending in a zero that its size counts. Malformed bytes become U+FFFD.
OdbcWideText Widened(std::string_view utf8);

// Appends wide text as clean UTF-8; false when something in it was malformed and became U+FFFD.
bool AppendUtf8(const SQLWCHAR* text, size_t length, std::string& utf8);

}  // namespace stockbook::databases
