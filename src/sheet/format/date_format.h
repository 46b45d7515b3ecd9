// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/date_pattern.h"
#include "stockbook/base/date.h"

namespace stockbook::sheet {

// A parsed date format: y, M, d, H (24 hours), h (12 with AM/PM, otherwise 24), m and s, by the number of letters; m
// next to hours or seconds means minutes, otherwise the month, in either case of letters; MMM and ddd are names. Texts
// in double quotes, characters after a backslash and all others (年, 月, 日: year, month, day) are literal. A plain
// value.
class DateFormat {
 public:
  DateFormat() = default;
  static DateFormat Parse(std::string_view format);
  // True when the format has letters of dates and no digit places of numbers.
  static bool IsDateFormat(std::string_view format);

  std::string Format(base::Date date) const;

 private:
  void FindMinutes();

  std::vector<base::DatePiece> pieces_;
  bool halves_ = false;
};

}  // namespace stockbook::sheet
