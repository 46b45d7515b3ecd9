// SPDX-License-Identifier: MIT
#include "stockbook/range/range_presets.h"

#include "stockbook/base/date.h"

namespace stockbook::app {
namespace {

constexpr int kQuarterMonths = 3;

JournalRange PeriodsFrom(PeriodKey first, int count) {
  return {RangeBound::OfPeriod(first), RangeBound::OfPeriod(first.Plus(count - 1))};
}

}  // namespace

JournalRange RangeOf(RangePreset preset, int64_t today, const std::optional<PeriodKey>& newest) {
  const base::DateParts now = base::Date::FromSeconds(today * base::Date::kSecondsPerDay).parts();
  const PeriodKey month{now.year, now.month};
  switch (preset) {
    case RangePreset::kAll:
      return {};
    case RangePreset::kThisMonth:
      return PeriodsFrom(month, 1);
    case RangePreset::kLastMonth:
      return PeriodsFrom(month.Plus(-1), 1);
    case RangePreset::kThisQuarter:
      return PeriodsFrom({now.year, (now.month - 1) / kQuarterMonths * kQuarterMonths + 1}, kQuarterMonths);
    case RangePreset::kThisYear:
      return PeriodsFrom({now.year, 1}, 12);
    case RangePreset::kNewestPeriod:
      return newest ? PeriodsFrom(*newest, 1) : JournalRange();
  }
  return {};
}

}  // namespace stockbook::app
