// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/base/value.h"
#include "stockbook/columns/chunk_builder.h"
#include "stockbook/columns/column.h"
#include "stockbook/columns/text_pool.h"

namespace stockbook::columns {

// Builds a Column value by value; any mixture of types is accepted. Appending is amortised O(1), and a text equal to
// the one before it costs AppendText a comparison.
class STOCKBOOK_API ColumnBuilder {
 public:
  // Of a column without rows.
  ColumnBuilder();
  ~ColumnBuilder();
  ColumnBuilder(ColumnBuilder&&) noexcept;
  ColumnBuilder& operator=(ColumnBuilder&&) noexcept;

  // These append one row of any type.
  void AppendNull();
  void AppendInteger(int64_t number);
  void AppendDouble(double number);
  void AppendMoney(base::Money money);
  void AppendDate(base::Date date);
  // Clean UTF-8 (base::CleanUtf8). An empty text is stored apart from null but reads the same.
  void AppendText(std::string_view text);
  // Up to TextPool::kMostAtOnce texts, which are looked up together.
  void AppendTexts(std::span<const std::string_view> texts);
  // The same with a code that AddText gave.
  void AppendTextCode(uint32_t code);
  // The code under which a clean text is stored, or now will be, so that whoever meets it again need not look it up.
  uint32_t AddText(std::string_view text) { return pool_->Add(text); }
  // One row of whatever type the value has.
  void Append(const base::Value& value);
  // Rows appended since the last Finish.
  size_t size() const;

  // Hands the column over and leaves the builder empty.
  Column Finish();

  // These append as many rows at once: numbers, money in units of 1/10,000, whole numbers.
  void AppendDoubles(std::span<const double> numbers);
  void AppendMoneyUnits(std::span<const int64_t> units) { AppendCounted(ChunkType::kMoney, units); }
  void AppendIntegers(std::span<const int64_t> numbers) { AppendCounted(ChunkType::kInteger, numbers); }
  // Dates by their seconds.
  void AppendDateSeconds(std::span<const int64_t> seconds) { AppendCounted(ChunkType::kDate, seconds); }
  // Appends a row of another column; `pool_codes` translates its text codes and is filled along the way (start it
  // empty).
  void AppendFrom(const Column& source, size_t row, std::vector<uint32_t>& pool_codes);
  // Appends all rows of another column: what is looked up by hash is each of its distinct texts, once.
  void AppendColumn(const Column& source);

 private:
  void Roll() {
    if (chunk_.size() == Column::kChunkRows) Flush();
  }
  void Flush();
  uint32_t CodeOf(std::string_view text);
  void AppendCounted(ChunkType type, std::span<const int64_t> numbers);
  // The rows of a chunk of one counted type, `codes` as AppendFrom has them.
  void AppendCounted(const ColumnChunk& chunk, const std::vector<uint32_t>& codes);

  Column column_;
  std::shared_ptr<TextPool> pool_;
  uint32_t last_code_ = 0;
  ChunkBuilder chunk_;
};

}  // namespace stockbook::columns
