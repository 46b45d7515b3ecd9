// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include "stockbook/range/journal_range.h"

namespace stockbook::app {

// The ranges at hand, in the order in which they are offered.
enum class RangePreset { kAll, kThisMonth, kLastMonth, kThisQuarter, kThisYear, kNewestPeriod };
inline constexpr RangePreset kRangePresets[] = {RangePreset::kAll,       RangePreset::kThisMonth,
                                                RangePreset::kLastMonth, RangePreset::kThisQuarter,
                                                RangePreset::kThisYear,  RangePreset::kNewestPeriod};

// The range as of `today`, a day counted from the zero date. `newest` is the last period that the journal has; without
// one the newest period is everything.
JournalRange RangeOf(RangePreset preset, int64_t today, const std::optional<PeriodKey>& newest);

}  // namespace stockbook::app
