// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "base/value.h"

namespace stockbook::platform {

class TextPool;

// What the values of a chunk are. kText holds codes of the column's TextPool; kMixed holds codes of the chunk's own
// dictionary of values.
enum class ChunkType : uint8_t { kNull, kInteger, kDouble, kMoney, kDate, kText, kMixed };

// Whole numbers of 0, 1, 2, 4 or 8 bytes above a common base; the narrowest width that holds the range is chosen.
class PackedIntegers {
 public:
  PackedIntegers() = default;
  explicit PackedIntegers(std::span<const int64_t> numbers);
  int64_t At(size_t row) const;
  void Read(size_t first, std::span<int64_t> out) const;
  // The same for numbers that are known to be so small.
  void ReadCodes(size_t first, std::span<uint32_t> out) const;
  // The numbers of the rows first + at[0], first + at[1], ...; `first` may lie before the first row, modulo 2^64.
  void ReadAt(size_t first, std::span<const uint16_t> at, std::span<int64_t> out) const;
  // Every number is `least()` or at most `range()` above it.
  int64_t least() const { return base_; }
  uint64_t range() const { return width_ == 8 ? UINT64_MAX : (uint64_t{1} << (8 * width_)) - 1; }
  // The same divided by `divisor`, 1 to 10^15; the numbers are below 2^53.
  void ReadQuotients(size_t first, double divisor, std::span<double> out) const;
  size_t MemoryBytes() const { return static_cast<size_t>(width_) * count_; }

 private:
  int64_t base_ = 0;
  size_t count_ = 0;
  uint8_t width_ = 0;
  std::unique_ptr<unsigned char[]> bytes_;
};

// Up to Column::kChunkRows rows of one column in one encoding. Never throws on reading.
struct ColumnChunk {
  ChunkType type = ChunkType::kNull;
  uint32_t rows = 0;
  bool has_nulls = false;
  bool raw_doubles = false;  // doubles that are no short decimals stand in `doubles`
  int64_t unit = 1;          // integers, money and dates: value = packed x unit; doubles: value = packed / unit
  PackedIntegers packed;
  std::vector<double> doubles;
  std::vector<uint64_t> nulls;          // one bit a row where has_nulls
  std::vector<base::Value> dictionary;  // kMixed

  bool IsNull(size_t row) const {
    return type == ChunkType::kNull || (has_nulls && ((nulls[row / 64] >> (row % 64)) & 1) != 0);
  }
  // The value of a row of any type but kText.
  base::Value NumberValueAt(size_t row) const;
  // Of a kDouble chunk.
  double DoubleAt(size_t row) const;
  size_t MemoryBytes() const;
};

// Collects the values of one chunk and chooses the encoding at the end.
class ChunkBuilder {
 public:
  void AddNull();
  void AddInteger(int64_t number) { AddCounted(ChunkType::kInteger, number); }
  void AddMoney(base::Money money) { AddCounted(ChunkType::kMoney, money.units()); }
  void AddDate(base::Date date) { AddCounted(ChunkType::kDate, date.seconds()); }
  void AddTextCode(uint32_t code) { AddCounted(ChunkType::kText, code); }
  void AddDouble(double number);
  void AddDoubles(std::span<const double> numbers);
  void AddMoneyUnits(std::span<const int64_t> units);
  // A row of another chunk; text codes are taken as they are.
  void AddFrom(const ColumnChunk& source, size_t row);
  size_t size() const { return rows_; }
  // `texts` reads the text of a code when a chunk of mixed types is made.
  ColumnChunk Finish(const TextPool& texts);

 private:
  static constexpr int64_t kDateUnits[] = {86400, 60};
  static constexpr int64_t kMoneyUnits[] = {1000000, 10000, 100};
  void AddCounted(ChunkType type, int64_t number);
  void MarkType(ChunkType type);
  ColumnChunk FinishMixed(const TextPool& texts);
  void FinishDoubles(ColumnChunk& chunk);
  void FinishCounted(ColumnChunk& chunk);

  uint32_t rows_ = 0;
  ChunkType type_ = ChunkType::kNull;
  bool has_nulls_ = false;
  void AddValue(const base::Value& value);

  std::vector<base::Value> values_;  // values that came from a mixed chunk; numbers_ holds their index
  std::vector<int64_t> numbers_;     // counted values, or the bits of doubles
  std::vector<ChunkType> types_;     // only once two types have met
  std::vector<uint64_t> nulls_;
};

}  // namespace stockbook::platform
