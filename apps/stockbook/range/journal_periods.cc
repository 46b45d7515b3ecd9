// SPDX-License-Identifier: MIT
#include "stockbook/range/journal_periods.h"

#include <cmath>
#include <optional>

#include "columns/block_reader.h"
#include "stockbook/base/column_keys.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

int64_t DayInValue(const base::Value& value) {
  const auto date = value.AsDate();
  return date ? date->days() : 0;
}

// Dates that came as texts; equal texts are read once.
void ReadTextDays(const columns::Column& dates, const RecordRun& records, std::vector<int64_t>& days) {
  std::vector<std::optional<int64_t>> known(dates.TextCodeCount());
  columns::BlockReader<uint32_t> reader(&dates);
  for (const columns::RowBlock block : columns::RowBlocks(records.begin, records.end)) {
    for (const uint32_t code : reader.Read(block)) {
      if (!known[code]) known[code] = DayInValue(base::Value(std::string(dates.TextOfCode(code))));
      days.push_back(*known[code]);
    }
  }
}

void AppendRun(const RecordRun& records, std::vector<RecordRun>& runs) {
  if (!runs.empty() && runs.back().end == records.begin) {
    runs.back().end = records.end;
  } else {
    runs.push_back(records);
  }
}

}  // namespace

std::vector<PeriodRun> PeriodRunsOf(const platform::GridTable& grid) {
  std::vector<PeriodRun> runs;
  const columns::Column* periods = grid.LoadedText(grid.ColIndex(keys::kPeriod));
  const size_t count = grid.RecordCount();
  if (periods == nullptr || !periods->HasTextCodes()) {
    for (size_t record = 0; record < count; ++record) {
      std::string period = periods == nullptr ? std::string() : periods->Text(record);
      if (runs.empty() || runs.back().period != period) runs.push_back({{record, record}, std::move(period)});
      runs.back().records.end = record + 1;
    }
    return runs;
  }
  columns::BlockReader<uint32_t> reader(periods);
  std::optional<uint32_t> last;
  for (const columns::RowBlock block : columns::RowBlocks(0, count)) {
    const auto codes = reader.Read(block);
    for (size_t at = 0; at < codes.size(); ++at) {
      if (last == codes[at]) continue;
      last = codes[at];
      const size_t record = block.first + at;
      if (!runs.empty()) runs.back().records.end = record;
      runs.push_back({{record, count}, periods->Text(record)});
    }
  }
  return runs;
}

std::vector<int64_t> DaysOf(const platform::GridTable& grid, const RecordRun& records) {
  std::vector<int64_t> days;
  const columns::Column* dates = grid.LoadedData(grid.ColIndex(keys::kBillDate));
  if (dates == nullptr) return std::vector<int64_t>(records.size());
  days.reserve(records.size());
  if (dates->HasTextCodes()) {
    ReadTextDays(*dates, records, days);
    return days;
  }
  columns::BlockReader<double> reader(dates);
  for (const columns::RowBlock block : columns::RowBlocks(records.begin, records.end)) {
    for (const double day : reader.Read(block)) days.push_back(static_cast<int64_t>(std::floor(day)));
  }
  return days;
}

std::vector<RecordRun> RecordsInside(const JournalRange& range, const std::vector<PeriodRun>& periods,
                                     const platform::GridTable& grid) {
  std::vector<RecordRun> inside;
  for (const PeriodRun& run : periods) {
    const std::optional<PeriodKey> key = PeriodKey::Of(run.period);
    if (key && !range.HasDays()) {
      if (range.Contains(key, 0)) AppendRun(run.records, inside);
      continue;
    }
    const std::vector<int64_t> days = DaysOf(grid, run.records);
    for (size_t at = 0; at < days.size(); ++at) {
      const size_t record = run.records.begin + at;
      if (range.Contains(key, days[at])) AppendRun({record, record + 1}, inside);
    }
  }
  return inside;
}

}  // namespace stockbook::app
