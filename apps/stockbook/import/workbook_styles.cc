// SPDX-License-Identifier: MIT
#include "stockbook/import/workbook_styles.h"

#include <cmath>

#include "base/number.h"
#include "base/text.h"
#include "stockbook/base/date.h"

namespace stockbook::app {
namespace {

// The formats that spreadsheets know by number alone; those from 27 on are the Chinese, Japanese and Korean ones.
bool IsKnownDateFormat(size_t number) {
  return (number >= 14 && number <= 22) || (number >= 27 && number <= 36) || (number >= 45 && number <= 47) ||
         (number >= 50 && number <= 58);
}

}  // namespace

bool IsDateFormat(size_t number, std::string_view code) {
  if (code.empty()) return IsKnownDateFormat(number);
  char closing = 0;
  for (size_t at = 0; at < code.size(); ++at) {
    const char c = code[at];
    if (closing != 0) {
      if (c == closing) closing = 0;
    } else if (c == '\\' || c == '_' || c == '*') {
      ++at;
    } else if (c == '"') {
      closing = '"';
    } else if (c == '[') {
      closing = ']';
    } else if (c == ';') {
      // What follows is for negative numbers and texts.
      return false;
    } else if (const char lower = base::AsciiLower(c); lower == 'y' || lower == 'd') {
      return true;
    }
  }
  return false;
}

std::string SerialDateText(double days, int epoch_day) {
  constexpr double kMostDays = 2958466;  // 10000-01-01
  if (!(days >= 0) || days + epoch_day >= kMostDays) return base::NumberText(days);
  const double seconds = std::round((days + epoch_day) * static_cast<double>(base::Date::kSecondsPerDay));
  return base::Date::FromSeconds(static_cast<int64_t>(seconds)).Text();
}

}  // namespace stockbook::app
