// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "stockbook/range/journal_range.h"
#include "stockbook/range/range_presets.h"

namespace stockbook::app {

// A range and an end of one in the user's language: "2025年01月至2025年03月", "2025-01 to 2025-03"; "全部" for
// everything.
QString BoundWords(const RangeBound& bound);
QString RangeWords(const JournalRange& range);
// "本月".
QString PresetWords(RangePreset preset);

}  // namespace stockbook::app
