// SPDX-License-Identifier: MIT
#include "stockbook/base/date.h"

#include <array>
#include <chrono>

#include "base/digits.h"
#include "base/text.h"

namespace stockbook::base {
namespace {

// Days from 1970-01-01 back to the zero date 1899-12-30.
constexpr int64_t kZeroDay = -25569;

// Reads up to `most` digits; nothing when there are fewer than `least`.
std::optional<int> TakeNumber(std::string_view& text, size_t least, size_t most) {
  size_t length = 0;
  int number = 0;
  while (length < text.size() && length < most && IsDigit(text[length])) number = number * 10 + (text[length++] - '0');
  if (length < least) return std::nullopt;
  text.remove_prefix(length);
  return number;
}

bool TakeSign(std::string_view& text, char sign) {
  if (text.empty() || text.front() != sign) return false;
  text.remove_prefix(1);
  return true;
}

// HH:mm[:ss[.fff]]; the fraction is dropped.
bool TakeTime(std::string_view& text, DateParts& parts) {
  const auto hour = TakeNumber(text, 1, 2);
  if (!hour || !TakeSign(text, ':')) return false;
  const auto minute = TakeNumber(text, 1, 2);
  if (!minute) return false;
  parts.hour = *hour;
  parts.minute = *minute;
  if (!TakeSign(text, ':')) return true;
  const auto second = TakeNumber(text, 1, 2);
  if (!second) return false;
  parts.second = *second;
  return !TakeSign(text, '.') || TakeNumber(text, 1, 9).has_value();
}

// The number of the digits at `at`, or -1 when one of them is no digit.
int DigitsAt(std::string_view text, size_t at, size_t count) {
  int number = 0;
  for (size_t index = at; index < at + count; ++index) {
    if (!IsDigit(text[index])) return -1;
    number = number * 10 + (text[index] - '0');
  }
  return number;
}

// Days from the zero date to a day of the Gregorian calendar; years are counted from March, so that leap days come
// last.
int64_t DayNumber(int year, int month, int day) {
  constexpr int64_t kDaysOfEra = 146097;  // of 400 years
  constexpr int64_t kZeroDate = 693899;   // 1899-12-30, counted from 0000-03-01
  const int shifted_year = month > 2 ? year : year - 1;
  const int64_t era = shifted_year / 400;
  const int64_t year_of_era = shifted_year - era * 400;
  const int64_t day_of_year = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
  return era * kDaysOfEra + year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year - kZeroDate;
}

// yyyy-MM-dd, or with HH:mm:ss, as stores write dates, in a fraction of the time; nothing for any other spelling.
std::optional<Date> ParsePlainDate(std::string_view text) {
  constexpr size_t kDayLength = 10;
  constexpr size_t kTimeLength = 19;
  constexpr int kSafeDays = 28;  // every month has them
  const bool timed = text.size() == kTimeLength && text[10] == ' ' && text[13] == ':' && text[16] == ':';
  if ((text.size() != kDayLength && !timed) || text[4] != '-' || text[7] != '-') return std::nullopt;
  const int year = DigitsAt(text, 0, 4);
  const int month = DigitsAt(text, 5, 2);
  const int day = DigitsAt(text, 8, 2);
  if (year < 100 || month < 1 || month > 12 || day < 1 || day > kSafeDays) return std::nullopt;
  const int64_t seconds = DayNumber(year, month, day) * Date::kSecondsPerDay;
  if (!timed) return Date::FromSeconds(seconds);
  const int hour = DigitsAt(text, 11, 2);
  const int minute = DigitsAt(text, 14, 2);
  const int second = DigitsAt(text, 17, 2);
  if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59) return std::nullopt;
  return Date::FromSeconds(seconds + hour * 3600 + minute * 60 + second);
}

void Put(char*& at, int number, int digits) {
  for (int place = digits; place-- > 0; number /= 10) at[place] = static_cast<char>('0' + number % 10);
  at += digits;
}

}  // namespace

std::optional<Date> Date::FromParts(const DateParts& parts) {
  if (parts.year < 100 || parts.year > 9999 || parts.month < 1 || parts.day < 1) return std::nullopt;
  const std::chrono::year_month_day day{std::chrono::year(parts.year),
                                        std::chrono::month(static_cast<unsigned>(parts.month)),
                                        std::chrono::day(static_cast<unsigned>(parts.day))};
  if (!day.ok() || parts.hour < 0 || parts.hour > 23 || parts.minute < 0 || parts.minute > 59 || parts.second < 0 ||
      parts.second > 59) {
    return std::nullopt;
  }
  const int64_t days = std::chrono::sys_days(day).time_since_epoch().count() - kZeroDay;
  return Date(days * kSecondsPerDay + parts.hour * 3600 + parts.minute * 60 + parts.second);
}

std::optional<Date> Date::Parse(std::string_view text) {
  if (const auto plain = ParsePlainDate(text)) return plain;
  text = TrimBlanks(text);
  DateParts parts;
  const auto year = TakeNumber(text, 4, 4);
  if (!year || text.empty() || (text.front() != '-' && text.front() != '/')) return std::nullopt;
  const char separator = text.front();
  text.remove_prefix(1);
  const auto month = TakeNumber(text, 1, 2);
  if (!month || !TakeSign(text, separator)) return std::nullopt;
  const auto day = TakeNumber(text, 1, 2);
  if (!day) return std::nullopt;
  parts.year = *year;
  parts.month = *month;
  parts.day = *day;
  if (!text.empty()) {
    if (text.front() != ' ' && text.front() != 'T') return std::nullopt;
    text.remove_prefix(1);
    if (!TakeTime(text, parts) || !text.empty()) return std::nullopt;
  }
  return FromParts(parts);
}

int64_t Date::days() const {
  const int64_t days = seconds_ / kSecondsPerDay;
  return seconds_ % kSecondsPerDay < 0 ? days - 1 : days;
}

bool Date::HasTime() const { return seconds_ % kSecondsPerDay != 0; }

DateParts Date::parts() const {
  const std::chrono::year_month_day day{std::chrono::sys_days(std::chrono::days(days() + kZeroDay))};
  const auto time = static_cast<int>(seconds_ - days() * kSecondsPerDay);
  return {static_cast<int>(day.year()),
          static_cast<int>(static_cast<unsigned>(day.month())),
          static_cast<int>(static_cast<unsigned>(day.day())),
          time / 3600,
          time / 60 % 60,
          time % 60};
}

std::string Date::Text() const {
  const DateParts at = parts();
  std::array<char, 19> text{};
  char* end = text.data();
  Put(end, at.year, 4);
  *end++ = '-';
  Put(end, at.month, 2);
  *end++ = '-';
  Put(end, at.day, 2);
  if (HasTime()) {
    *end++ = ' ';
    Put(end, at.hour, 2);
    *end++ = ':';
    Put(end, at.minute, 2);
    *end++ = ':';
    Put(end, at.second, 2);
  }
  return std::string(text.data(), static_cast<size_t>(end - text.data()));
}

}  // namespace stockbook::base
