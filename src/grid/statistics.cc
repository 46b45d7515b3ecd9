// SPDX-License-Identifier: MIT
#include "grid/statistics.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "columns/row_classes.h"
#include "grid/row_runs.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/base/money.h"

namespace stockbook::grid {
namespace {

namespace keys = base::keys;

constexpr std::array<const char*, 3> kCounted = {"入库单", "出库单", "调拨单"};

// The index in kCounted of a bill name; kCounted.size() for a name that is not counted.
uint8_t CountedAs(std::string_view bill_name) {
  return static_cast<uint8_t>(std::find(kCounted.begin(), kCounted.end(), bill_name) - kCounted.begin());
}

int16_t Counted(int64_t number) {
  if (number > INT16_MAX) throw base::ArithmeticError("单据数超过 32767，无法统计：请缩小账簿的范围后再统计。");
  return static_cast<int16_t>(number);
}

// Rows with a positive bill key, by kind.
using BillCounts = std::array<int64_t, kCounted.size() + 1>;

BillCounts CountBills(const platform::GridTable& grid) {
  const int bill_id = grid.ColIndex(keys::kBillID);
  const int bill_name = grid.ColIndex(keys::kBillName);
  const columns::Column* ids = UneditedColumn(grid, bill_id);
  const columns::Column* names = UneditedColumn(grid, bill_name);
  const bool as_loaded = ids != nullptr && names != nullptr;
  const size_t records = as_loaded ? grid.RecordCount() : 0;
  const auto is_bill = columns::ClassifyNumbers(ids, records, [](double id) -> uint8_t { return id > 0 ? 1 : 0; });
  const auto kinds = columns::ClassifyTexts(names, records, CountedAs);
  BillCounts counts{};
  for (auto run = RowRunAt(grid, grid.FixedRows()); run.count > 0; run = RowRunAt(grid, run.End())) {
    if (as_loaded && !run.IsInserted()) {
      const auto first = static_cast<size_t>(run.record);
      for (size_t at = first; at < first + static_cast<size_t>(run.count); ++at) counts[kinds[at]] += is_bill[at];
      continue;
    }
    for (int row = run.row; row < run.End(); ++row) {
      if (grid.ValueMatrix(row, bill_id) > 0) ++counts[CountedAs(grid.TextMatrix(row, bill_name))];
    }
  }
  return counts;
}

}  // namespace

std::string Statistics(const platform::GridTable& grid) {
  const BillCounts counts = CountBills(grid);
  const int16_t receipts = Counted(counts[0]);
  const int16_t issues = Counted(counts[1]);
  const int16_t transfers = Counted(counts[2]);
  const int16_t total = Counted(int64_t{receipts} + issues + transfers);
  if (total == 0) return "未找到输入单据";
  return "单据共：" + std::to_string(total) + " 张\r\n  其中:\r\n    入库单:" + std::to_string(receipts) +
         "张\r\n    出库单:" + std::to_string(issues) + "张\r\n    调拨单:" + std::to_string(transfers) + "张";
}

}  // namespace stockbook::grid
