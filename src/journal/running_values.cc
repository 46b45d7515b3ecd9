// SPDX-License-Identifier: MIT
#include "journal/running_values.h"

#include <algorithm>

#include "base/column_keys.h"
#include "journal/running_pass.h"

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
  std::vector<uint32_t> codes(records);
  periods->ReadTextCodes(0, codes);
  for (auto begin = codes.begin(); begin != codes.end();) {
    const auto end = std::find_if(begin, codes.end(), [&](uint32_t code) { return code != *begin; });
    const auto first = static_cast<size_t>(begin - codes.begin());
    found.push_back({periods->Text(first), first, static_cast<size_t>(end - codes.begin()), {}, {}});
    begin = end;
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
