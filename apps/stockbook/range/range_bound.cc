// SPDX-License-Identifier: MIT
#include "stockbook/range/range_bound.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <vector>

#include "base/text.h"
#include "stockbook/base/date.h"

namespace stockbook::app {
namespace {

constexpr int kMonthsOfYear = 12;
constexpr int kMonthsOfQuarter = 3;
constexpr int kLeastPeriodYear = 100;  // as of base::Date
constexpr int kMostPeriodYear = 9999;

std::optional<int> PlainBoundNumber(std::string_view digits) {
  int number = 0;
  const char* end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number);
  if (digits.empty() || error != std::errc() || stop != end || number < 0) return std::nullopt;
  return number;
}

std::string TwoNumbers(const char* format, int first, int second) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), format, first, second);
  return text.data();
}

bool IsYear(int year) { return year >= kLeastPeriodYear && year <= kMostPeriodYear; }
bool IsMonth(int month) { return month >= 1 && month <= kMonthsOfYear; }

BoundPair PeriodPair(PeriodKey first, int count) {
  return {RangeBound::OfPeriod(first), RangeBound::OfPeriod(first.Plus(count - 1))};
}

std::optional<BoundPair> DayPair(int year, int month, int day) {
  const auto date = base::Date::FromParts({year, month, day, 0, 0, 0});
  if (!date) return std::nullopt;
  return BoundPair{RangeBound::OfDay(date->days()), RangeBound::OfDay(date->days())};
}

std::optional<BoundPair> OfNumbers(const std::vector<int>& numbers) {
  if (!IsYear(numbers[0])) return std::nullopt;
  if (numbers.size() == 1) return PeriodPair({numbers[0], 1}, kMonthsOfYear);
  if (!IsMonth(numbers[1])) return std::nullopt;
  if (numbers.size() == 2) return PeriodPair({numbers[0], numbers[1]}, 1);
  return DayPair(numbers[0], numbers[1], numbers[2]);
}

// The parts between the signs, of which Chinese dates have one after the last number, too.
std::vector<std::string_view> PartsOf(std::string_view text) {
  std::vector<std::string_view> parts;
  size_t begin = 0;
  for (size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '-') continue;
    parts.push_back(text.substr(begin, at - begin));
    begin = at + 1;
  }
  if (begin < text.size() || parts.empty()) parts.push_back(text.substr(begin));
  return parts;
}

// Every spelling with dashes between its numbers.
std::string WithDashes(std::string_view text) {
  std::string dashed(text);
  for (const char* sign : {"年", "月", "/", "."}) dashed = base::ReplaceAll(dashed, sign, "-");
  if (dashed.ends_with("日")) dashed.resize(dashed.size() - std::string_view("日").size());
  return dashed;
}

std::optional<BoundPair> ReadQuarter(std::string_view year_text, std::string_view quarter_text) {
  const auto year = PlainBoundNumber(year_text);
  const auto quarter = PlainBoundNumber(quarter_text);
  if (!year || !IsYear(*year) || !quarter || *quarter < 1 || *quarter > kMonthsOfYear / kMonthsOfQuarter)
    return std::nullopt;
  return PeriodPair({*year, (*quarter - 1) * kMonthsOfQuarter + 1}, kMonthsOfQuarter);
}

// 202503 and 20250315.
std::optional<BoundPair> ReadJoined(std::string_view digits) {
  std::vector<int> numbers;
  for (const size_t begin : {size_t{0}, size_t{4}, size_t{6}}) {
    if (begin >= digits.size()) break;
    const auto number = PlainBoundNumber(digits.substr(begin, begin == 0 ? 4 : 2));
    if (!number) return std::nullopt;
    numbers.push_back(*number);
  }
  return OfNumbers(numbers);
}

}  // namespace

std::optional<PeriodKey> PeriodKey::Of(std::string_view period) {
  const auto year = PlainBoundNumber(base::LeftCharacters(period, 4));
  const auto month = PlainBoundNumber(base::RightCharacters(period, 2));
  if (base::CharacterCount(period) < 6 || !year || !IsYear(*year) || !month || !IsMonth(*month)) return std::nullopt;
  return PeriodKey{*year, *month};
}

PeriodKey PeriodKey::Plus(int months) const {
  const int count = year * kMonthsOfYear + month - 1 + months;
  return {count / kMonthsOfYear, count % kMonthsOfYear + 1};
}

std::string PeriodKey::Caption() const { return TwoNumbers("%04d年%02d月", year, month); }

std::string PeriodKey::Text() const { return TwoNumbers("%04d-%02d", year, month); }

std::string RangeBound::Caption() const { return unit == Unit::kPeriod ? period.Caption() : Text(); }

std::string RangeBound::Text() const {
  if (unit == Unit::kPeriod) return period.Text();
  return base::Date::FromSeconds(day * base::Date::kSecondsPerDay).Text();
}

std::optional<BoundPair> ReadBounds(std::string_view text) {
  const std::string dashed = WithDashes(base::TrimBlanks(text));
  if (const size_t sign = dashed.find_first_of("Qq"); sign != std::string::npos) {
    const std::string_view year = std::string_view(dashed).substr(0, sign);
    return ReadQuarter(year.ends_with('-') ? year.substr(0, year.size() - 1) : year,
                       std::string_view(dashed).substr(sign + 1));
  }
  const std::vector<std::string_view> parts = PartsOf(dashed);
  if (parts.size() == 1 && (dashed.size() == 6 || dashed.size() == 8)) return ReadJoined(dashed);
  if (parts.size() > 3 || parts[0].size() != 4) return std::nullopt;
  std::vector<int> numbers;
  for (const std::string_view part : parts) {
    const auto number = part.size() <= 4 ? PlainBoundNumber(part) : std::nullopt;
    if (!number) return std::nullopt;
    numbers.push_back(*number);
  }
  return OfNumbers(numbers);
}

}  // namespace stockbook::app
