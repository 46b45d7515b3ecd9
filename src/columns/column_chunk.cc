// SPDX-License-Identifier: MIT
#include "stockbook/columns/column_chunk.h"

namespace stockbook::columns {

ColumnChunk ColumnChunk::Repeated(uint32_t count) const {
  ColumnChunk chunk;
  chunk.type = type;
  chunk.rows = count;
  chunk.raw_doubles = raw_doubles;
  chunk.unit = unit;
  chunk.dictionary = dictionary;
  if (raw_doubles) {
    chunk.doubles.assign(count, doubles.front());
  } else {
    chunk.packed = PackedIntegers::Repeated(packed.At(0), count);
  }
  return chunk;
}

double ColumnChunk::DoubleAt(size_t row) const {
  if (raw_doubles) return doubles[row];
  return static_cast<double>(packed.At(row)) / static_cast<double>(unit);
}

base::Value ColumnChunk::NumberValueAt(size_t row) const {
  if (IsNull(row)) return {};
  switch (type) {
    case ChunkType::kInteger:
      return base::Value(packed.At(row) * unit);
    case ChunkType::kDouble:
      return base::Value(DoubleAt(row));
    case ChunkType::kMoney:
      return base::Value(base::Money::FromUnits(packed.At(row) * unit));
    case ChunkType::kDate:
      return base::Value(base::Date::FromSeconds(packed.At(row) * unit));
    case ChunkType::kMixed:
      return dictionary[static_cast<size_t>(packed.At(row))];
    case ChunkType::kNull:
    case ChunkType::kText:
      break;
  }
  return {};
}

size_t ColumnChunk::MemoryBytes() const {
  size_t bytes =
      sizeof(*this) + packed.MemoryBytes() + doubles.capacity() * sizeof(double) + nulls.capacity() * sizeof(uint64_t);
  for (const base::Value& value : dictionary) {
    const auto* text = value.As<std::string>();
    bytes += sizeof(value) + (text ? text->capacity() : 0);
  }
  return bytes;
}

}  // namespace stockbook::columns
