// SPDX-License-Identifier: MIT
#include "grid/statistics.h"

#include <array>
#include <cstdint>

#include "base/money.h"

namespace stockbook::grid {
namespace {

constexpr std::array<const char*, 3> kCounted = {"入库单", "出库单", "调拨单"};

int16_t Counted(int number) {
  if (number > INT16_MAX) throw base::ArithmeticError("单据数超过 32767，无法统计：请缩小账簿的范围后再统计。");
  return static_cast<int16_t>(number);
}

}  // namespace

std::string Statistics(const platform::Grid& grid) {
  const int bill_id = grid.ColIndex("BillID");
  const int bill_name = grid.ColIndex("BillName");
  std::array<int16_t, kCounted.size()> counts{};
  for (int row = grid.FixedRows(); row < grid.Rows(); ++row) {
    if (grid.ValueMatrix(row, bill_id) <= 0) continue;
    const std::string name = grid.TextMatrix(row, bill_name);
    for (size_t kind = 0; kind < kCounted.size(); ++kind) {
      if (name == kCounted[kind]) counts[kind] = Counted(counts[kind] + 1);
    }
  }
  const int16_t total = Counted(counts[0] + counts[1] + counts[2]);
  if (total == 0) return "未找到输入单据";
  return "单据共：" + std::to_string(total) + " 张\r\n  其中:\r\n    入库单:" + std::to_string(counts[0]) +
         "张\r\n    出库单:" + std::to_string(counts[1]) + "张\r\n    调拨单:" + std::to_string(counts[2]) + "张";
}

}  // namespace stockbook::grid
