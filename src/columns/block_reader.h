// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/columns/column.h"

namespace stockbook::columns {

// So many rows are decoded at a time that they stay in the cache.
inline constexpr size_t kBlockRows = 2048;

// Rows [first, first + count) of a column.
struct RowBlock {
  size_t first = 0;
  size_t count = 0;
};

// The rows [begin, end) in blocks: for (const RowBlock block : RowBlocks(begin, end))
class STOCKBOOK_API RowBlocks {
 public:
  class Iterator {
   public:
    Iterator(size_t first, size_t end) : first_(first), end_(end) {}
    RowBlock operator*() const { return {first_, std::min(kBlockRows, end_ - first_)}; }
    Iterator& operator++() {
      first_ += std::min(kBlockRows, end_ - first_);
      return *this;
    }
    bool operator!=(const Iterator& other) const { return first_ != other.first_; }

   private:
    size_t first_;
    size_t end_;
  };

  RowBlocks(size_t begin, size_t end) : begin_(std::min(begin, end)), end_(end) {}
  Iterator begin() const { return {begin_, end_}; }
  Iterator end() const { return {end_, end_}; }

 private:
  size_t begin_;
  size_t end_;
};

// Reads a column in blocks, as doubles, as text codes (uint32_t) or as Money units (int64_t). Borrows the column; no
// column reads as no rows.
template <typename Number>
class BlockReader {
 public:
  explicit BlockReader(const Column* column) : column_(column), numbers_(column == nullptr ? 0 : kBlockRows) {}

  // The rows of the block, which must be in the column; valid until the next call.
  std::span<const Number> Read(RowBlock block) {
    if (column_ == nullptr) return {};
    const std::span<Number> rows = std::span(numbers_).first(block.count);
    if constexpr (std::is_same_v<Number, double>)
      column_->ReadNumbers(block.first, rows);
    else if constexpr (std::is_same_v<Number, uint32_t>)
      column_->ReadTextCodes(block.first, rows);
    else
      column_->ReadMoneyUnits(block.first, rows);
    return rows;
  }

 private:
  const Column* column_;
  std::vector<Number> numbers_;
};

}  // namespace stockbook::columns
