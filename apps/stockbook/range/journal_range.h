// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "stockbook/range/range_bound.h"

namespace stockbook::app {

// The part of a journal between two ends, both included; an end that is missing leaves that side open. Ends may be
// periods or days, also one of each: a line is inside if its period, or its day, is. A plain value.
struct JournalRange {
  std::optional<RangeBound> from;
  std::optional<RangeBound> to;

  static JournalRange Of(const BoundPair& bounds) { return {bounds.first, bounds.last}; }

  bool IsAll() const { return !from && !to; }
  // Whether its end is before its begin; a period and a day cannot be compared, because a period need not be a month.
  bool IsBackward() const;
  // A line without a period that can be read counts to the month of its day.
  bool Contains(const std::optional<PeriodKey>& period, int64_t day) const;
  // Where it needs the days of lines beside their periods.
  bool HasDays() const;
  // The range of the same length before or after this one, for whole periods; nothing for others.
  std::optional<JournalRange> Neighbour(int steps) const;
  // "2025年01月", "2025年01月至2025年03月", "2025-01-15起", "至2025年03月", "全部".
  std::string Caption() const;

  bool operator==(const JournalRange&) const = default;
};

}  // namespace stockbook::app
