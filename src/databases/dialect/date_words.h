// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace stockbook::databases {

// What an engine calls the parts of a date in its patterns, each with its leading zeros.
struct DateWords {
  std::string_view year;
  std::string_view month;
  std::string_view day;
  std::string_view hour;
  std::string_view minute;
  std::string_view second;
};

// A pattern of the desktop's Format (in lower case: yyyy mm dd hh nn ss, and mm after hh for minutes) in an engine's
// words, everything else between double quotes. Empty when it is no pattern of dates, or has parts beside these.
std::string EnginePattern(std::string_view pattern, const DateWords& words);

// What the server's Convert makes of a date in one of its numbered styles, as a pattern of the desktop; empty for a
// style that has none.
std::string_view DesktopPatternOfStyle(int64_t style);

}  // namespace stockbook::databases
