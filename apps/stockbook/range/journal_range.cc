// SPDX-License-Identifier: MIT
#include "stockbook/range/journal_range.h"

#include "stockbook/base/date.h"

namespace stockbook::app {
namespace {

using Unit = RangeBound::Unit;

constexpr int kMonthsAYear = 12;

PeriodKey MonthOfDay(int64_t day) {
  const base::DateParts parts = base::Date::FromSeconds(day * base::Date::kSecondsPerDay).parts();
  return {parts.year, parts.month};
}

int MonthsBetween(const PeriodKey& first, const PeriodKey& last) {
  return (last.year - first.year) * kMonthsAYear + last.month - first.month;
}

}  // namespace

bool JournalRange::IsBackward() const {
  if (!from || !to || from->unit != to->unit) return false;
  return from->unit == Unit::kPeriod ? to->period < from->period : to->day < from->day;
}

bool JournalRange::Contains(const std::optional<PeriodKey>& period, int64_t day) const {
  const PeriodKey key = period ? *period : MonthOfDay(day);
  if (from && (from->unit == Unit::kPeriod ? key < from->period : day < from->day)) return false;
  return !to || !(to->unit == Unit::kPeriod ? to->period < key : to->day < day);
}

bool JournalRange::HasDays() const { return (from && from->unit == Unit::kDay) || (to && to->unit == Unit::kDay); }

std::optional<JournalRange> JournalRange::Neighbour(int steps) const {
  if (!from || !to || HasDays() || IsBackward()) return std::nullopt;
  const int months = (MonthsBetween(from->period, to->period) + 1) * steps;
  const PeriodKey first = from->period.Plus(months);
  const PeriodKey last = to->period.Plus(months);
  constexpr int kLeastYearOfRange = 100;
  constexpr int kMostYearOfRange = 9999;
  if (first.year < kLeastYearOfRange || last.year > kMostYearOfRange) return std::nullopt;
  return JournalRange{RangeBound::OfPeriod(first), RangeBound::OfPeriod(last)};
}

std::string JournalRange::Caption() const {
  if (IsAll()) return "全部";
  if (!to) return from->Caption() + "起";
  if (!from) return "至" + to->Caption();
  return *from == *to ? from->Caption() : from->Caption() + "至" + to->Caption();
}

}  // namespace stockbook::app
