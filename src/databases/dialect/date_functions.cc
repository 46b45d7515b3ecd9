// SPDX-License-Identifier: MIT
#include "databases/dialect/date_functions.h"

#include <array>
#include <chrono>

#include "base/text.h"

namespace stockbook::databases {
namespace {

using base::Date;
using base::DateParts;
using base::Value;

template <int DateParts::*Part>
Value PartOf(Arguments values) {
  const auto date = values[0].AsDate();
  return date ? Value(static_cast<int64_t>(date->parts().*Part)) : Value();
}

// Months and days beyond their range run into the next year and month, as in DateSerial(2004, 13, 1).
Value DateSerial(Arguments values) {
  const auto year = values[0].AsInteger();
  const auto month = values[1].AsInteger();
  const auto day = values[2].AsInteger();
  constexpr int64_t kFar = 120000;
  if (!year || !month || !day || *year < 0 || *year > 9999) return Value();
  if (*month < -kFar || *month > kFar || *day < -kFar * 30 || *day > kFar * 30) return Value();
  const int64_t full_year = *year < 30 ? *year + 2000 : *year < 100 ? *year + 1900 : *year;
  const auto first = std::chrono::year(static_cast<int>(full_year)) / std::chrono::January / 1;
  const std::chrono::year_month_day start = first + std::chrono::months(*month - 1);
  const std::chrono::year_month_day at = std::chrono::sys_days(start) + std::chrono::days(*day - 1);
  const auto date = Date::FromParts({static_cast<int>(at.year()), static_cast<int>(static_cast<unsigned>(at.month())),
                                     static_cast<int>(static_cast<unsigned>(at.day()))});
  return date ? Value(*date) : Value();
}

Value Now(Arguments) { return Value(LocalNow()); }

Value Today(Arguments) { return Value(Date::FromSeconds(LocalNow().days() * Date::kSecondsPerDay)); }

Value ToDate(Arguments values) {
  if (const auto* text = values[0].As<std::string>()) {
    const auto date = ReadDateText(*text);
    return date ? Value(*date) : Value();
  }
  const auto date = values[0].AsDate();
  return date ? Value(*date) : Value();
}

Value ToDay(Arguments values) {
  const Value date = ToDate(values);
  return date.IsNull() ? date : Value(Date::FromSeconds(date.As<Date>()->days() * Date::kSecondsPerDay));
}

constexpr std::array<ScalarFunction, 11> kDateFunctions = {{
    {"sb_year", PartOf<&DateParts::year>},
    {"sb_month", PartOf<&DateParts::month>},
    {"sb_day", PartOf<&DateParts::day>},
    {"sb_hour", PartOf<&DateParts::hour>},
    {"sb_minute", PartOf<&DateParts::minute>},
    {"sb_second", PartOf<&DateParts::second>},
    {"sb_date_serial", DateSerial, 3},
    {"sb_now", Now, 0},
    {"sb_today", Today, 0},
    {"sb_to_date", ToDate},
    {"sb_to_day", ToDay},
}};

}  // namespace

base::Date LocalNow() {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::tm local{};
  localtime_r(&now, &local);
  const auto date = base::Date::FromParts(
      {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, std::min(local.tm_sec, 59)});
  return date.value_or(base::Date());
}

std::span<const ScalarFunction> DateFunctions() { return kDateFunctions; }

std::optional<Date> ReadDateText(std::string_view text) {
  text = base::TrimBlanks(text);
  if (const auto date = Date::Parse(text)) return date;
  constexpr size_t kCompactLength = 8;
  if (text.size() == kCompactLength && text.find_first_not_of("0123456789") == std::string_view::npos) {
    return Date::Parse(std::string(text.substr(0, 4)) + "-" + std::string(text.substr(4, 2)) + "-" +
                       std::string(text.substr(6)));
  }
  // "2005-3 -8 ": blanks around the separators go.
  std::string tight;
  for (size_t at = 0; at < text.size(); ++at) {
    const bool before = at + 1 < text.size() && (text[at + 1] == '-' || text[at + 1] == '/' || text[at + 1] == ' ');
    const bool after = !tight.empty() && (tight.back() == '-' || tight.back() == '/');
    if (text[at] != ' ' || (!before && !after)) tight += text[at];
  }
  return Date::Parse(tight);
}

}  // namespace stockbook::databases
