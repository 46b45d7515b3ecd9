// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "stockbook/columns/column.h"

namespace stockbook::app {

// Where the rows of a table are by their whole-number key; of equal keys the first one. Building it is O(n log n), and
// O(n) for keys that ascend; finding a row is O(1) where the keys are dense, as they usually are, otherwise O(log n).
class KeyedRows {
 public:
  KeyedRows() = default;
  explicit KeyedRows(const columns::Column& keys);

  std::optional<size_t> Find(int64_t key) const;

 private:
  static constexpr uint32_t kNone = UINT32_MAX;

  int64_t least_ = 0;
  std::vector<uint32_t> dense_;                       // by key - least_
  std::vector<std::pair<int64_t, uint32_t>> sorted_;  // where that would be too long
};

}  // namespace stockbook::app
