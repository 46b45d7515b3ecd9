// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/base/value.h"
#include "stockbook/columns/column_chunk.h"
#include "stockbook/columns/text_pool.h"

namespace stockbook::columns {

// What the whole numbers are that Column::ReadRaw reads: codes of texts, decimals, the bits of doubles, something else.
enum class RawKind : uint8_t { kText, kDecimal, kDouble, kOther };
// What Column::ReadRaw says about the rows it read. `decimals` applies to kDecimal alone: the value is raw /
// 10^decimals. The number of a row that is not null is between `least` and `least + range`.
struct RawRows {
  RawKind kind = RawKind::kOther;
  int decimals = 0;
  size_t count = 0;
  int64_t least = INT64_MIN;
  uint64_t range = UINT64_MAX;
};

// One column of typed values, as a connection delivers it and a grid keeps it: immutable once built, moved and never
// copied along the way. Rows are kept in chunks of kChunkRows, each in the narrowest encoding that holds its values
// exactly (constant, scaled integers of half a byte or 1 to 8 bytes, doubles, codes into a pool of distinct texts), so
// a typical journal column takes 0 to 4 bytes a row. Texts are made on request only. Reading a row is O(1);
// out-of-range rows read as null.
class STOCKBOOK_API Column {
 public:
  // 65536: every chunk but the last one has as many rows.
  static constexpr size_t kChunkRows = size_t{1} << 16;

  Column() = default;
  // `rows` times the same value.
  static Column Constant(base::Value value, size_t rows);

  // Rows, nulls included.
  size_t size() const { return size_; }
  // Null beyond the end. Makes a copy of a text.
  base::Value At(size_t row) const;
  // True beyond the end, too.
  bool IsNull(size_t row) const;
  // The default text of the value (base::Value::Text) appended to `out`.
  void AppendText(size_t row, std::string& out) const;
  // The default text of the value; "" for null and beyond the end.
  std::string Text(size_t row) const;
  // The number it is or spells, else 0.
  double Number(size_t row) const;

  // Rows [first, first + out.size()) at once; a value that is no number reads as 0.
  void ReadNumbers(size_t first, std::span<double> out) const;
  // The same as Money units (1/10,000). Doubles and texts round half to even; values out of range throw
  // base::ArithmeticError.
  void ReadMoneyUnits(size_t first, std::span<int64_t> out) const;

  // True when every row is a text or null; then equal codes mean equal texts, and code 0 is null.
  bool HasTextCodes() const { return text_codes_; }
  // The codes of rows [first, first + out.size()); of a column with text codes alone.
  void ReadTextCodes(size_t first, std::span<uint32_t> out) const;
  // Valid as long as the column or a copy of it; "" for a code that is not there.
  std::string_view TextOfCode(uint32_t code) const { return pool_ ? pool_->TextOf(code) : std::string_view(); }
  // Fetches these texts, which are scattered in memory, for whoever reads them soon; see TextPool.
  void PrefetchTexts(std::span<const int64_t> codes) const {
    if (pool_) pool_->Prefetch(codes);
  }
  // One above the highest code.
  uint32_t TextCodeCount() const { return pool_ ? pool_->CodeCount() : 1; }

  // Sets the bits in marks[code] for every text that contains the part; see TextPool.
  void MarkTextsContaining(const base::Substring& part, uint8_t bits, std::span<uint8_t> marks) const {
    if (pool_) pool_->MarkContaining(part, bits, marks);
  }
  // Whether every row is a number or null. O(chunks).
  bool HoldsNumbersOnly() const;

  // Rows from `first` on as whole numbers, as many as fit and are of one kind; none from size() on. Equal numbers mean
  // equal values: text codes, units of a power of ten, the bits of doubles, or whatever tells other values apart. The
  // number of a null row is 0, and so may be others: ask IsNull where it is 0.
  RawRows ReadRaw(size_t first, std::span<int64_t> out) const;
  // The same for the rows first + at[0], first + at[1], ..., in ascending order.
  RawRows ReadRawAt(size_t first, std::span<const uint16_t> at, std::span<int64_t> out) const;

  // The value that every row has, or nothing when they differ or there are no rows. O(chunks).
  std::optional<base::Value> ConstantValue() const;

  // A column whose row i is this column's row order[i]. O(order.size()).
  Column Gather(std::span<const uint32_t> order) const;

  // Approximate memory, that of the texts included.
  size_t MemoryBytes() const;

 private:
  friend class ColumnBuilder;
  // The kind of a chunk's numbers; numbers read from it are multiplied by its unit where necessary.
  static RawRows KindOf(const ColumnChunk& chunk, std::span<int64_t> numbers);
  const ColumnChunk& ChunkOf(size_t row) const { return chunks_[row / kChunkRows]; }
  size_t size_ = 0;
  bool text_codes_ = true;
  std::vector<ColumnChunk> chunks_;
  std::shared_ptr<const TextPool> pool_;
};

}  // namespace stockbook::columns
