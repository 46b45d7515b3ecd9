// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/columns/column_chunk.h"

namespace stockbook::columns {

// Picks rows out of chunks that are all of one type, without making values of them: a few instructions a row. Borrows
// the chunks.
class STOCKBOOK_API RowGatherer {
 public:
  // Chunks of a column, each but the last full; `rows` in all of them.
  RowGatherer(std::span<const ColumnChunk> chunks, size_t rows);

  // Whether Gather may be called: the chunks count in one type and a common unit, and each of the rows is there.
  bool Covers(std::span<const uint32_t> order) const;
  // A chunk whose row i is row order[i].
  ColumnChunk Gather(std::span<const uint32_t> order);

 private:
  struct Source {
    const PackedIntegers* packed;  // nullptr where every row is null
    const uint64_t* nulls;         // nullptr where none is
    int64_t factor;                // makes its numbers counts of the common unit
  };
  bool FindUnit(std::span<const ColumnChunk> chunks);
  static bool Fits(const PackedIntegers& packed, int64_t factor);
  void GatherNumbers(std::span<const uint32_t> order);
  // Returns how many of the rows are null.
  size_t GatherWithNulls(std::span<const uint32_t> order, std::vector<uint64_t>& nulls);

  size_t rows_;
  ChunkType type_ = ChunkType::kNull;
  int64_t unit_ = 1;
  bool covers_ = false;
  bool has_nulls_ = false;
  std::vector<Source> sources_;
  std::vector<int64_t> numbers_;
};

}  // namespace stockbook::columns
