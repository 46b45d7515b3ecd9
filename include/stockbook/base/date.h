// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "stockbook/base/api.h"

namespace stockbook::base {

// Calendar parts of a Date; month 1..12, day 1..31, hour 0..23.
struct DateParts {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

// A date with a time of day, to the second, in the proleptic Gregorian calendar without time zones.
// The zero date is 1899-12-30 00:00:00, the day number 0 of desktop databases. A plain value.
class STOCKBOOK_API Date {
 public:
  // Of every day: there are no leap seconds.
  static constexpr int64_t kSecondsPerDay = 86400;

  // The zero date.
  constexpr Date() = default;
  // Any number; nothing is checked.
  static constexpr Date FromSeconds(int64_t seconds_since_zero_date) { return Date(seconds_since_zero_date); }
  // Nothing when the parts name no day or time (month 13, 30 February, hour 24) or the year is outside 100..9999.
  static std::optional<Date> FromParts(const DateParts& parts);
  // Reads yyyy-M-d, yyyy/M/d, and an optional time HH:mm[:ss[.fff]] after a blank or 'T'; blanks around it are ignored.
  static std::optional<Date> Parse(std::string_view text);

  // Since the zero date, below 0 before it.
  constexpr int64_t seconds() const { return seconds_; }
  // Whole days since the zero date, rounded down.
  int64_t days() const;
  // Whether it is the zero date, which stands for no date.
  constexpr bool IsZero() const { return seconds_ == 0; }
  // Whether it is another time than midnight.
  bool HasTime() const;
  // In the proleptic Gregorian calendar.
  DateParts parts() const;
  // "yyyy-MM-dd", with " HH:mm:ss" only when there is a time.
  std::string Text() const;

  constexpr auto operator<=>(const Date&) const = default;

 private:
  constexpr explicit Date(int64_t seconds) : seconds_(seconds) {}
  int64_t seconds_ = 0;
};

}  // namespace stockbook::base
