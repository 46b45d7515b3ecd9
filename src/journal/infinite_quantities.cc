// SPDX-License-Identifier: MIT
#include "journal/infinite_quantities.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "columns/block_reader.h"
#include "stockbook/base/column_keys.h"

namespace stockbook::journal {
namespace {

namespace keys = base::keys;

constexpr std::array kMovements = {keys::kQuantity,  keys::kRevQty,  keys::kIssQty,
                                   keys::kQuantity2, keys::kRevQty2, keys::kIssQty2};
constexpr std::array kStock = {keys::kStoQty, keys::kStoQty2};

bool AreFinite(const Totals& totals) { return std::isfinite(totals.quantity) && std::isfinite(totals.quantity2); }

bool AreFinite(const MovementSums& sums) {
  return AreFinite(sums.movement) && AreFinite(sums.receipts) && AreFinite(sums.issues);
}

// The first of the records that is not finite in the column; their number without one.
size_t FirstInfinite(const columns::Column* column, size_t records) {
  if (column == nullptr) return records;
  columns::BlockReader<double> reader(column);
  for (const columns::RowBlock block : columns::RowBlocks(0, std::min(records, column->size()))) {
    const auto numbers = reader.Read(block);
    const auto found =
        std::find_if(numbers.begin(), numbers.end(), [](double number) { return !std::isfinite(number); });
    if (found != numbers.end()) return block.first + static_cast<size_t>(found - numbers.begin());
  }
  return records;
}

template <size_t count>
size_t FirstInfinite(const platform::GridTable& grid, const std::array<const char*, count>& keys) {
  size_t first = grid.RecordCount();
  for (const char* key : keys) first = FirstInfinite(grid.LoadedText(grid.ColIndex(key)), first);
  return first;
}

// What is not finite once stays so: the last record tells for all.
bool EndsFinite(const platform::GridTable& grid) {
  return std::all_of(kStock.begin(), kStock.end(), [&](const char* key) {
    const columns::Column* column = grid.LoadedText(grid.ColIndex(key));
    return column == nullptr || column->size() == 0 || std::isfinite(column->Number(column->size() - 1));
  });
}

std::string BillOf(size_t record, const platform::GridTable& grid) {
  const columns::Column* bills = grid.LoadedText(grid.ColIndex(keys::kBillNo));
  return bills == nullptr || record >= bills->size() ? std::string() : bills->Text(record);
}

}  // namespace

std::string DescribeInfiniteQuantity(const Totals& opening, const std::vector<PeriodTotals>& periods,
                                     const platform::GridTable& grid) {
  if (!AreFinite(opening))
    return "期初余额的数量是无穷大，结存数量和均价都无法计算：请在数据库中更正期初余额，再重新读入。";
  if (periods.empty()) return {};
  if (AreFinite(periods.back().in_all) && EndsFinite(grid)) return {};
  const size_t first = std::min(FirstInfinite(grid, kMovements), FirstInfinite(grid, kStock));
  const std::string bill = BillOf(first, grid);
  return (bill.empty() ? std::string("有单据") : "单据“" + bill + "”") +
         "的数量是无穷大，或累计后超出了数的范围，从该行起结存数量和均价无法计算：请在数据库中更正该单据的数量，再重新"
         "读入。";
}

}  // namespace stockbook::journal
