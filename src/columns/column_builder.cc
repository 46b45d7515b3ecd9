// SPDX-License-Identifier: MIT
#include "stockbook/columns/column_builder.h"

#include <algorithm>
#include <array>
#include <string>

namespace stockbook::columns {

ColumnBuilder::ColumnBuilder() : pool_(std::make_shared<TextPool>()) {}
ColumnBuilder::~ColumnBuilder() = default;
ColumnBuilder::ColumnBuilder(ColumnBuilder&&) noexcept = default;
ColumnBuilder& ColumnBuilder::operator=(ColumnBuilder&&) noexcept = default;

void ColumnBuilder::AppendNull() {
  chunk_.AddNull();
  Roll();
}

void ColumnBuilder::AppendInteger(int64_t number) {
  chunk_.AddInteger(number);
  Roll();
}

void ColumnBuilder::AppendDouble(double number) {
  chunk_.AddDouble(number);
  Roll();
}

void ColumnBuilder::AppendMoney(base::Money money) {
  chunk_.AddMoney(money);
  Roll();
}

void ColumnBuilder::AppendDate(base::Date date) {
  chunk_.AddDate(date);
  Roll();
}

uint32_t ColumnBuilder::CodeOf(std::string_view text) {
  if (last_code_ == 0 || pool_->TextOf(last_code_) != text) last_code_ = pool_->Add(text);
  return last_code_;
}

void ColumnBuilder::AppendText(std::string_view text) {
  chunk_.AddTextCode(CodeOf(text));
  Roll();
}

void ColumnBuilder::AppendTexts(std::span<const std::string_view> texts) {
  std::array<uint32_t, TextPool::kMostAtOnce> codes;
  pool_->AddAll(texts, codes);
  for (size_t at = 0; at < texts.size(); ++at) AppendTextCode(codes[at]);
}

void ColumnBuilder::AppendTextCode(uint32_t code) {
  chunk_.AddTextCode(code);
  Roll();
}

void ColumnBuilder::Append(const base::Value& value) {
  if (const auto* integer = value.As<int64_t>())
    AppendInteger(*integer);
  else if (const auto* number = value.As<double>())
    AppendDouble(*number);
  else if (const auto* money = value.As<base::Money>())
    AppendMoney(*money);
  else if (const auto* date = value.As<base::Date>())
    AppendDate(*date);
  else if (const auto* text = value.As<std::string>())
    AppendText(*text);
  else
    AppendNull();
}

void ColumnBuilder::AppendDoubles(std::span<const double> numbers) {
  while (!numbers.empty()) {
    const size_t count = std::min(numbers.size(), Column::kChunkRows - chunk_.size());
    chunk_.AddDoubles(numbers.first(count));
    numbers = numbers.subspan(count);
    Roll();
  }
}

void ColumnBuilder::AppendCounted(ChunkType type, std::span<const int64_t> numbers) {
  while (!numbers.empty()) {
    const size_t count = std::min(numbers.size(), Column::kChunkRows - chunk_.size());
    chunk_.AddCounted(type, numbers.first(count));
    numbers = numbers.subspan(count);
    Roll();
  }
}

void ColumnBuilder::AppendFrom(const Column& source, size_t row, std::vector<uint32_t>& pool_codes) {
  if (source.IsNull(row)) return AppendNull();
  const ColumnChunk& chunk = source.ChunkOf(row);
  row %= Column::kChunkRows;
  if (chunk.type == ChunkType::kMixed) return Append(chunk.NumberValueAt(row));
  if (chunk.type == ChunkType::kText) {
    const auto code = static_cast<uint32_t>(chunk.packed.At(row));
    pool_codes.resize(source.TextCodeCount());
    if (pool_codes[code] == 0) pool_codes[code] = pool_->Add(source.TextOfCode(code));
    chunk_.AddTextCode(pool_codes[code]);
  } else {
    chunk_.AddFrom(chunk, row);
  }
  Roll();
}

void ColumnBuilder::AppendCounted(const ColumnChunk& chunk, const std::vector<uint32_t>& codes) {
  constexpr size_t kPortion = 1024;
  int64_t block[kPortion];
  for (size_t row = 0; row < chunk.rows;) {
    const size_t count = std::min({kPortion, chunk.rows - row, Column::kChunkRows - chunk_.size()});
    const std::span<int64_t> numbers(block, count);
    chunk.packed.Read(row, numbers);
    if (chunk.type == ChunkType::kText) {
      for (int64_t& number : numbers) number = codes[static_cast<size_t>(number)];
    } else if (chunk.unit != 1) {
      for (int64_t& number : numbers) number *= chunk.unit;
    }
    chunk_.AddCounted(chunk.type, numbers);
    Roll();
    row += count;
  }
}

void ColumnBuilder::AppendColumn(const Column& source) {
  std::vector<uint32_t> codes(source.TextCodeCount());
  std::array<std::string_view, TextPool::kMostAtOnce> texts;
  for (size_t code = 1; code < codes.size(); code += texts.size()) {
    const size_t count = std::min(texts.size(), codes.size() - code);
    for (size_t at = 0; at < count; ++at) texts[at] = source.TextOfCode(static_cast<uint32_t>(code + at));
    pool_->AddAll(std::span(texts).first(count), std::span(codes).subspan(code, count));
  }
  size_t first = 0;
  for (const ColumnChunk& chunk : source.chunks_) {
    const bool plain = !chunk.has_nulls && chunk.type != ChunkType::kNull && chunk.type != ChunkType::kMixed;
    if (plain && chunk.type != ChunkType::kDouble) {
      AppendCounted(chunk, codes);
    } else if (plain) {
      std::vector<double> doubles(chunk.rows);
      source.ReadNumbers(first, doubles);
      AppendDoubles(doubles);
    } else {
      for (size_t row = 0; row < chunk.rows; ++row) AppendFrom(source, first + row, codes);
    }
    first += chunk.rows;
  }
}

size_t ColumnBuilder::size() const { return column_.size_ + chunk_.size(); }

void ColumnBuilder::Flush() {
  column_.size_ += chunk_.size();
  column_.chunks_.push_back(chunk_.Finish(*pool_));
  const ChunkType type = column_.chunks_.back().type;
  column_.text_codes_ = column_.text_codes_ && (type == ChunkType::kText || type == ChunkType::kNull);
}

Column ColumnBuilder::Finish() {
  if (chunk_.size() > 0) Flush();
  if (pool_->CodeCount() > 1) {
    pool_->Seal();
    column_.pool_ = std::move(pool_);
  }
  Column finished = std::move(column_);
  *this = ColumnBuilder();
  return finished;
}

}  // namespace stockbook::columns
