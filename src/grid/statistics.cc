// SPDX-License-Identifier: MIT
#include "grid/statistics.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "base/column_keys.h"
#include "base/money.h"
#include "columns/column.h"
#include "platform/row_runs.h"

namespace stockbook::grid {
namespace {

namespace keys = base::keys;

constexpr std::array<const char*, 3> kCounted = {"入库单", "出库单", "调拨单"};
constexpr size_t kBlockRows = 2048;

// The index in kCounted of a bill name; kCounted.size() for a name that is not counted.
size_t KindOf(std::string_view bill_name) {
  return static_cast<size_t>(std::find(kCounted.begin(), kCounted.end(), bill_name) - kCounted.begin());
}

int16_t Counted(int64_t number) {
  if (number > INT16_MAX) throw base::ArithmeticError("单据数超过 32767，无法统计：请缩小账簿的范围后再统计。");
  return static_cast<int16_t>(number);
}

// Counts rows by kind: unedited records in blocks, all other rows cell by cell.
class BillCounts {
 public:
  explicit BillCounts(const platform::Grid& grid)
      : grid_(grid), bill_id_(grid.ColIndex(keys::kBillID)), bill_name_(grid.ColIndex(keys::kBillName)) {
    if (grid.HasEditedRecords(bill_id_) || grid.HasEditedRecords(bill_name_)) return;
    ids_ = grid.LoadedText(bill_id_);
    names_ = grid.LoadedText(bill_name_);
    if (names_ == nullptr || !names_->HasTextCodes()) return;
    for (uint32_t code = 0; code < names_->TextCodeCount(); ++code) {
      kinds_.push_back(static_cast<uint8_t>(KindOf(names_->TextOfCode(code))));
    }
  }

  void Add(const platform::RowRun& run) {
    if (!run.IsInserted() && ids_ != nullptr && !kinds_.empty()) return AddRecords(run);
    for (int row = run.row; row < run.End(); ++row) {
      if (grid_.ValueMatrix(row, bill_id_) > 0) ++counts_[KindOf(grid_.TextMatrix(row, bill_name_))];
    }
  }

  int16_t Of(size_t kind) const { return Counted(counts_[kind]); }

 private:
  void AddRecords(const platform::RowRun& run) {
    std::array<double, kBlockRows> ids;
    std::array<uint32_t, kBlockRows> codes;
    for (size_t done = 0; done < static_cast<size_t>(run.count);) {
      const size_t count = std::min(kBlockRows, static_cast<size_t>(run.count) - done);
      const size_t first = static_cast<size_t>(run.record) + done;
      ids_->ReadNumbers(first, std::span(ids).first(count));
      names_->ReadTextCodes(first, std::span(codes).first(count));
      for (size_t at = 0; at < count; ++at) counts_[kinds_[codes[at]]] += ids[at] > 0 ? 1 : 0;
      done += count;
    }
  }

  const platform::Grid& grid_;
  int bill_id_;
  int bill_name_;
  const columns::Column* ids_ = nullptr;
  const columns::Column* names_ = nullptr;
  std::vector<uint8_t> kinds_;  // by text code
  std::array<int64_t, kCounted.size() + 1> counts_{};
};

}  // namespace

std::string Statistics(const platform::Grid& grid) {
  BillCounts counts(grid);
  for (auto run = platform::RowRunAt(grid, grid.FixedRows()); run.count > 0;
       run = platform::RowRunAt(grid, run.End())) {
    counts.Add(run);
  }
  const int16_t receipts = counts.Of(0);
  const int16_t issues = counts.Of(1);
  const int16_t transfers = counts.Of(2);
  const int16_t total = Counted(int64_t{receipts} + issues + transfers);
  if (total == 0) return "未找到输入单据";
  return "单据共：" + std::to_string(total) + " 张\r\n  其中:\r\n    入库单:" + std::to_string(receipts) +
         "张\r\n    出库单:" + std::to_string(issues) + "张\r\n    调拨单:" + std::to_string(transfers) + "张";
}

}  // namespace stockbook::grid
