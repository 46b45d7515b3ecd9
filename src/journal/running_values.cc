// SPDX-License-Identifier: MIT
#include "journal/running_values.h"

#include <optional>

#include "columns/block_reader.h"
#include "journal/running_pass.h"
#include "stockbook/base/column_keys.h"

namespace stockbook::journal {
namespace {

namespace keys = base::keys;

MovementSource SourceOf(const platform::GridTable& grid, const char* quantity, const char* quantity2,
                        const char* amount) {
  const auto loaded = [&](const char* key) { return grid.LoadedText(grid.ColIndex(key)); };
  return {loaded(quantity), loaded(quantity2), loaded(amount)};
}

// The periods of all records, without their totals.
std::vector<PeriodTotals> FindPeriods(const platform::GridTable& grid) {
  std::vector<PeriodTotals> found;
  const columns::Column* periods = grid.LoadedText(grid.ColIndex(keys::kPeriod));
  const size_t records = grid.RecordCount();
  if (periods == nullptr || !periods->HasTextCodes()) {
    for (size_t record = 0; record < records; ++record) {
      std::string period = periods == nullptr ? std::string() : periods->Text(record);
      if (found.empty() || found.back().period != period) found.push_back({std::move(period), record, record, {}, {}});
      found.back().end = record + 1;
    }
    return found;
  }
  columns::BlockReader<uint32_t> reader(periods);
  std::optional<uint32_t> last;
  for (const columns::RowBlock block : columns::RowBlocks(0, records)) {
    const auto codes = reader.Read(block);
    for (size_t at = 0; at < codes.size(); ++at) {
      if (last == codes[at]) continue;
      last = codes[at];
      const size_t record = block.first + at;
      if (!found.empty()) found.back().end = record;
      found.push_back({periods->Text(record), record, records, {}, {}});
    }
  }
  return found;
}

}  // namespace

std::vector<PeriodTotals> ComputeRunningValues(const Totals& opening, base::tqJournalTypeContants type,
                                               platform::GridTable& grid) {
  RunningBalance balance(BalanceKindOf(type), opening);
  RunningPass pass(balance, SourceOf(grid, keys::kQuantity, keys::kQuantity2, keys::kAccount),
                   SourceOf(grid, keys::kRevQty, keys::kRevQty2, keys::kRevAcc),
                   SourceOf(grid, keys::kIssQty, keys::kIssQty2, keys::kIssAcc));
  RunningBuilder running;
  std::vector<PeriodTotals> periods = FindPeriods(grid);
  // What the result had in their place makes room for them.
  EmptyRunningValues(grid);
  for (PeriodTotals& period : periods) {
    balance.StartPeriod();
    pass.Run(period.begin, period.end, running);
    period.in_period = balance.Period();
    period.in_all = balance.Cumulative();
  }
  grid.ReplaceLoaded(grid.ColIndex(keys::kStoQty), running.quantity.Finish());
  grid.ReplaceLoaded(grid.ColIndex(keys::kStoQty2), running.quantity2.Finish());
  grid.ReplaceLoaded(grid.ColIndex(keys::kStoAcc), running.amount.Finish());
  grid.ReplaceLoaded(grid.ColIndex(keys::kStoPrice), running.price.Finish());
  return periods;
}

void EmptyRunningValues(platform::GridTable& grid) {
  for (const char* key : keys::kRunning) {
    if (const int column = grid.ColIndex(key); column >= 0)
      grid.ReplaceLoaded(column, columns::Column::Constant(base::Value(), grid.RecordCount()));
  }
}

}  // namespace stockbook::journal
