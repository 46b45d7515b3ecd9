// SPDX-License-Identifier: MIT
#include "columns/row_gatherer.h"

#include <algorithm>

#include "stockbook/columns/column.h"

namespace stockbook::columns {

RowGatherer::RowGatherer(std::span<const ColumnChunk> chunks, size_t rows) : rows_(rows) {
  if (!FindUnit(chunks)) return;
  covers_ = true;
  for (const ColumnChunk& chunk : chunks) {
    if (chunk.type == ChunkType::kNull) {
      sources_.push_back({nullptr, nullptr, 1});
      has_nulls_ = true;
      continue;
    }
    // The packed numbers of doubles are multiples of 1/unit, all others of unit.
    const int64_t factor = type_ == ChunkType::kDouble ? unit_ / chunk.unit : chunk.unit / unit_;
    sources_.push_back({&chunk.packed, chunk.has_nulls ? chunk.nulls.data() : nullptr, factor});
    has_nulls_ = has_nulls_ || chunk.has_nulls;
    covers_ = covers_ && Fits(chunk.packed, factor);
  }
}

// Each unit of a type divides the greater ones.
bool RowGatherer::FindUnit(std::span<const ColumnChunk> chunks) {
  for (const ColumnChunk& chunk : chunks) {
    if (chunk.type == ChunkType::kMixed || chunk.raw_doubles) return false;
    if (chunk.type == ChunkType::kNull) continue;
    if (type_ == ChunkType::kNull) {
      type_ = chunk.type;
      unit_ = chunk.unit;
    }
    if (chunk.type != type_) return false;
    unit_ = type_ == ChunkType::kDouble ? std::max(unit_, chunk.unit) : std::min(unit_, chunk.unit);
  }
  return type_ != ChunkType::kNull;
}

// Whether the numbers stay exact in the common unit, doubles among them.
bool RowGatherer::Fits(const PackedIntegers& packed, int64_t factor) {
  constexpr int64_t kExactDoubles = int64_t{1} << 51;
  if (factor == 1) return true;
  const int64_t most = kExactDoubles / factor;
  return packed.range() < static_cast<uint64_t>(most) && packed.least() > -most &&
         packed.least() < most - static_cast<int64_t>(packed.range());
}

bool RowGatherer::Covers(std::span<const uint32_t> order) const {
  uint32_t last = 0;
  for (const uint32_t row : order) last = std::max(last, row);
  return covers_ && last < rows_;
}

void RowGatherer::GatherNumbers(std::span<const uint32_t> order) {
  for (size_t row = 0; row < order.size(); ++row) {
    const Source& source = sources_[order[row] / Column::kChunkRows];
    numbers_[row] = source.packed->At(order[row] % Column::kChunkRows) * source.factor;
  }
}

size_t RowGatherer::GatherWithNulls(std::span<const uint32_t> order, std::vector<uint64_t>& nulls) {
  size_t count = 0;
  for (size_t row = 0; row < order.size(); ++row) {
    const Source& source = sources_[order[row] / Column::kChunkRows];
    const size_t at = order[row] % Column::kChunkRows;
    const bool is_null =
        source.packed == nullptr || (source.nulls != nullptr && ((source.nulls[at / 64] >> (at % 64)) & 1) != 0);
    if (is_null) {
      nulls[row / 64] |= uint64_t{1} << (row % 64);
      // A neighbour's value keeps the packed range narrow; the rows before the first value get that one.
      numbers_[row] = count == row ? 0 : numbers_[row - 1];
      ++count;
      continue;
    }
    numbers_[row] = source.packed->At(at) * source.factor;
    if (count == row) std::fill_n(numbers_.begin(), row, numbers_[row]);
  }
  return count;
}

ColumnChunk RowGatherer::Gather(std::span<const uint32_t> order) {
  numbers_.resize(order.size());
  ColumnChunk chunk;
  chunk.rows = static_cast<uint32_t>(order.size());
  if (has_nulls_) {
    std::vector<uint64_t> nulls((order.size() + 63) / 64);
    const size_t count = GatherWithNulls(order, nulls);
    if (count == order.size()) return chunk;
    chunk.has_nulls = count > 0;
    if (chunk.has_nulls) chunk.nulls = std::move(nulls);
  } else {
    GatherNumbers(order);
  }
  chunk.type = type_;
  chunk.unit = unit_;
  chunk.packed = PackedIntegers(numbers_);
  return chunk;
}

}  // namespace stockbook::columns
