// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/base/value.h"
#include "stockbook/columns/column_chunk.h"

namespace stockbook::columns {

class TextPool;

// Collects the values of one chunk and chooses the encoding at the end.
class STOCKBOOK_API ChunkBuilder {
 public:
  // These add one row of any type; the chunk becomes mixed where they differ.
  void AddNull();
  void AddInteger(int64_t number) { AddCounted(ChunkType::kInteger, number); }
  void AddMoney(base::Money money) { AddCounted(ChunkType::kMoney, money.units()); }
  void AddDate(base::Date date) { AddCounted(ChunkType::kDate, date.seconds()); }
  void AddTextCode(uint32_t code) { AddCounted(ChunkType::kText, code); }
  void AddDouble(double number);
  // Rows of as many doubles, at once.
  void AddDoubles(std::span<const double> numbers);
  // Numbers of one counted type (integers, units of money, seconds of dates, text codes).
  void AddCounted(ChunkType type, std::span<const int64_t> numbers);
  // A row of another chunk; text codes are taken as they are.
  void AddFrom(const ColumnChunk& source, size_t row);
  // Rows added so far.
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
  std::vector<ChunkType> types_;     // empty until a second type appears
  std::vector<uint64_t> nulls_;
};

}  // namespace stockbook::columns
