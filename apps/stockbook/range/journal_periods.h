// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "stockbook/platform/grid_table.h"
#include "stockbook/range/journal_range.h"

namespace stockbook::app {

// The records [begin, end) of a journal.
struct RecordRun {
  size_t begin = 0;
  size_t end = 0;

  size_t size() const { return end - begin; }
  bool operator==(const RecordRun&) const = default;
};

// A period's lines, which follow each other: what the grid has under one node.
struct PeriodRun {
  RecordRun records;
  std::string period;  // as the journal has it
};

// The periods of a loaded journal in its order; one pass over its column.
std::vector<PeriodRun> PeriodRunsOf(const platform::GridTable& grid);

// The days of the records, counted from the zero date; 0 for a record without a date.
std::vector<int64_t> DaysOf(const platform::GridTable& grid, const RecordRun& records);

// The records inside a range, as few runs as possible, in ascending order. Days are only read where the range has some.
std::vector<RecordRun> RecordsInside(const JournalRange& range, const std::vector<PeriodRun>& periods,
                                     const platform::GridTable& grid);

}  // namespace stockbook::app
