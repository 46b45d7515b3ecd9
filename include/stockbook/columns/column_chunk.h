// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "stockbook/base/value.h"
#include "stockbook/columns/packed_integers.h"

namespace stockbook::columns {

// What the values of a chunk are. kText holds codes of the column's TextPool; kMixed holds codes of the chunk's own
// dictionary of values.
enum class ChunkType : uint8_t { kNull, kInteger, kDouble, kMoney, kDate, kText, kMixed };

// Up to Column::kChunkRows rows of one column in one encoding. Never throws on reading.
struct ColumnChunk {
  ChunkType type = ChunkType::kNull;
  uint32_t rows = 0;
  bool has_nulls = false;
  bool raw_doubles = false;  // `doubles` holds them, since they are no short decimals
  int64_t unit = 1;          // integers, money and dates: value = packed x unit; doubles: value = packed / unit
  PackedIntegers packed;
  std::vector<double> doubles;
  std::vector<uint64_t> nulls;          // one bit per row if has_nulls
  std::vector<base::Value> dictionary;  // kMixed

  // Row 0 to rows - 1; nothing is checked.
  bool IsNull(size_t row) const {
    return type == ChunkType::kNull || (has_nulls && ((nulls[row / 64] >> (row % 64)) & 1) != 0);
  }
  // `count` times the only row of this chunk.
  ColumnChunk Repeated(uint32_t count) const;
  // The value of a row of any type but kText.
  base::Value NumberValueAt(size_t row) const;
  // Of a kDouble chunk alone.
  double DoubleAt(size_t row) const;
  // Approximate memory, that of the texts in the dictionary included.
  size_t MemoryBytes() const;
};

}  // namespace stockbook::columns
