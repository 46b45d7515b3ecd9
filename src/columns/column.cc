// SPDX-License-Identifier: MIT
#include "stockbook/columns/column.h"

#include <algorithm>
#include <bit>

#include "base/number.h"
#include "columns/row_gatherer.h"
#include "stockbook/columns/chunk_builder.h"
#include "stockbook/columns/column_builder.h"

namespace stockbook::columns {
namespace {

constexpr size_t kBlock = 1024;
constexpr int kMoneyDecimals = 4;

// Calls `work(chunk, first row in the chunk, part of out)` for every chunk that [first, first + out.size()) touches.
template <typename Out, typename Work>
void ForEachPart(const std::vector<ColumnChunk>& chunks, size_t first, std::span<Out> out, Work work) {
  while (!out.empty()) {
    const size_t index = first / Column::kChunkRows;
    const size_t offset = first % Column::kChunkRows;
    const size_t count =
        index < chunks.size()
            ? std::min<size_t>(out.size(), chunks[index].rows - std::min<size_t>(offset, chunks[index].rows))
            : 0;
    if (count == 0) {
      std::fill(out.begin(), out.end(), Out{});
      return;
    }
    work(chunks[index], offset, out.first(count));
    out = out.subspan(count);
    first += count;
  }
}

template <typename Out>
void ClearNulls(const ColumnChunk& chunk, size_t first, std::span<Out> out) {
  if (!chunk.has_nulls) return;
  for (size_t row = 0; row < out.size(); ++row) {
    if (chunk.IsNull(first + row)) out[row] = Out{};
  }
}

// Reads counted values block by block and converts them.
template <typename Out, typename Convert>
void ReadCounted(const ColumnChunk& chunk, size_t first, std::span<Out> out, Convert convert) {
  int64_t block[kBlock];
  while (!out.empty()) {
    const size_t count = std::min(kBlock, out.size());
    chunk.packed.Read(first, std::span(block, count));
    for (size_t row = 0; row < count; ++row) out[row] = convert(block[row]);
    out = out.subspan(count);
    first += count;
  }
}

// Infinite numbers stay what they are, so that whoever sums them up notices.
double DoubleOf(const base::Value& value) {
  const auto* number = value.As<double>();
  return number != nullptr ? *number : value.Number().value_or(0.0);
}

void ReadChunkNumbers(const ColumnChunk& chunk, const TextPool* pool, size_t first, std::span<double> out) {
  const auto unit = static_cast<double>(chunk.unit);
  switch (chunk.type) {
    case ChunkType::kNull:
      std::fill(out.begin(), out.end(), 0.0);
      break;
    case ChunkType::kInteger:
      chunk.packed.ReadQuotients(first, 1, out);
      break;
    case ChunkType::kMoney:
      ReadCounted(chunk, first, out,
                  [&](int64_t number) { return base::Money::FromUnits(number * chunk.unit).ToDouble(); });
      break;
    case ChunkType::kDate:
      ReadCounted(chunk, first, out, [unit](int64_t number) { return static_cast<double>(number) * unit / 86400.0; });
      break;
    case ChunkType::kDouble:
      if (chunk.raw_doubles) {
        std::copy_n(chunk.doubles.begin() + static_cast<std::ptrdiff_t>(first), out.size(), out.begin());
      } else {
        chunk.packed.ReadQuotients(first, unit, out);
      }
      break;
    case ChunkType::kText:
      ReadCounted(chunk, first, out,
                  [pool](int64_t code) { return base::NumericValue(pool->TextOf(static_cast<uint32_t>(code))); });
      break;
    case ChunkType::kMixed:
      ReadCounted(chunk, first, out,
                  [&](int64_t code) { return DoubleOf(chunk.dictionary[static_cast<size_t>(code)]); });
      break;
  }
  ClearNulls(chunk, first, out);
}

// Values out of range are errors, infinite ones too; values that are no numbers are 0.
int64_t UnitsOf(const base::Value& value) {
  if (const auto money = value.AsMoney()) return money->units();
  if (value.Number() || value.As<double>() != nullptr) base::Money::ThrowOverflow();
  return 0;
}

void ReadChunkUnits(const ColumnChunk& chunk, const TextPool* pool, size_t first, std::span<int64_t> out) {
  switch (chunk.type) {
    case ChunkType::kMoney:
      ReadCounted(chunk, first, out, [&](int64_t number) { return number * chunk.unit; });
      break;
    case ChunkType::kInteger:
      ReadCounted(chunk, first, out, [](int64_t number) { return base::Money::FromInteger(number).units(); });
      break;
    case ChunkType::kText:
      ReadCounted(chunk, first, out, [pool](int64_t code) {
        return UnitsOf(base::Value(std::string(pool->TextOf(static_cast<uint32_t>(code)))));
      });
      break;
    case ChunkType::kDouble:
      if (!chunk.raw_doubles && base::Money::kScale % chunk.unit == 0) {
        const int64_t factor = base::Money::kScale / chunk.unit;
        ReadCounted(chunk, first, out, [factor](int64_t number) {
          int64_t units = 0;
          if (__builtin_mul_overflow(number, factor, &units)) base::Money::ThrowOverflow();
          return units;
        });
        break;
      }
      [[fallthrough]];
    case ChunkType::kMixed:
      for (size_t row = 0; row < out.size(); ++row) out[row] = UnitsOf(chunk.NumberValueAt(first + row));
      break;
    case ChunkType::kNull:
    case ChunkType::kDate:
      std::fill(out.begin(), out.end(), int64_t{0});
      break;
  }
  ClearNulls(chunk, first, out);
}

}  // namespace

Column Column::Constant(base::Value value, size_t rows) {
  if (rows == 0) return {};
  ColumnBuilder builder;
  builder.Append(value);
  Column column = builder.Finish();
  const ColumnChunk one = std::move(column.chunks_.front());
  column.chunks_.clear();
  column.size_ = rows;
  for (size_t left = rows; left > 0; left -= std::min(left, kChunkRows)) {
    column.chunks_.push_back(one.Repeated(static_cast<uint32_t>(std::min(left, kChunkRows))));
  }
  return column;
}

base::Value Column::At(size_t row) const {
  if (row >= size_) return {};
  const ColumnChunk& chunk = ChunkOf(row);
  row %= kChunkRows;
  if (chunk.type != ChunkType::kText) return chunk.NumberValueAt(row);
  if (chunk.IsNull(row)) return {};
  return base::Value(std::string(pool_->TextOf(static_cast<uint32_t>(chunk.packed.At(row)))));
}

bool Column::IsNull(size_t row) const { return row >= size_ || ChunkOf(row).IsNull(row % kChunkRows); }

void Column::AppendText(size_t row, std::string& out) const {
  if (row >= size_) return;
  const ColumnChunk& chunk = ChunkOf(row);
  if (chunk.type == ChunkType::kText) {
    if (!chunk.IsNull(row % kChunkRows)) out += pool_->TextOf(static_cast<uint32_t>(chunk.packed.At(row % kChunkRows)));
  } else {
    out += chunk.NumberValueAt(row % kChunkRows).Text();
  }
}

std::string Column::Text(size_t row) const {
  std::string text;
  AppendText(row, text);
  return text;
}

double Column::Number(size_t row) const {
  double number = 0;
  ReadNumbers(row, std::span(&number, 1));
  return number;
}

void Column::ReadNumbers(size_t first, std::span<double> out) const {
  ForEachPart(chunks_, first, out, [this](const ColumnChunk& chunk, size_t at, std::span<double> part) {
    ReadChunkNumbers(chunk, pool_.get(), at, part);
  });
}

void Column::ReadMoneyUnits(size_t first, std::span<int64_t> out) const {
  ForEachPart(chunks_, first, out, [this](const ColumnChunk& chunk, size_t at, std::span<int64_t> part) {
    ReadChunkUnits(chunk, pool_.get(), at, part);
  });
}

void Column::ReadTextCodes(size_t first, std::span<uint32_t> out) const {
  ForEachPart(chunks_, first, out, [](const ColumnChunk& chunk, size_t at, std::span<uint32_t> part) {
    if (chunk.type != ChunkType::kText) {
      std::fill(part.begin(), part.end(), 0U);
      return;
    }
    chunk.packed.ReadCodes(at, part);
    ClearNulls(chunk, at, part);
  });
}

bool Column::HoldsNumbersOnly() const {
  return std::none_of(chunks_.begin(), chunks_.end(), [](const ColumnChunk& chunk) {
    return chunk.type == ChunkType::kText || chunk.type == ChunkType::kMixed || chunk.type == ChunkType::kDate;
  });
}

RawRows Column::KindOf(const ColumnChunk& chunk, std::span<int64_t> numbers) {
  RawRows rows{RawKind::kOther, 0, numbers.size()};
  int64_t unit = 1;
  if (chunk.raw_doubles) {
    rows.kind = RawKind::kDouble;
    return rows;
  }
  switch (chunk.type) {
    case ChunkType::kText:
      rows.kind = RawKind::kText;
      break;
    case ChunkType::kInteger:
    case ChunkType::kMoney: {
      rows.kind = RawKind::kDecimal;
      rows.decimals = chunk.type == ChunkType::kMoney ? kMoneyDecimals : 0;
      // Hundredths stay hundredths instead of becoming ten-thousandths that end in zeros.
      unit = chunk.unit;
      for (; unit % 10 == 0 && rows.decimals > 0; unit /= 10) --rows.decimals;
      if (unit == 1) break;
      for (int64_t& number : numbers) number *= unit;
      break;
    }
    case ChunkType::kDouble:
      rows.kind = RawKind::kDecimal;
      for (int64_t rest = chunk.unit; rest > 1; rest /= 10) ++rows.decimals;
      break;
    default:
      break;
  }
  if (unit == 1) {
    rows.least = chunk.packed.least();
    rows.range = chunk.packed.range();
  }
  return rows;
}

RawRows Column::ReadRaw(size_t first, std::span<int64_t> out) const {
  if (first >= size_ || out.empty()) return {};
  const ColumnChunk& chunk = ChunkOf(first);
  const size_t at = first % kChunkRows;
  out = out.first(std::min<size_t>(out.size(), chunk.rows - at));
  if (chunk.raw_doubles) {
    for (size_t row = 0; row < out.size(); ++row) out[row] = std::bit_cast<int64_t>(chunk.doubles[at + row]);
  } else {
    chunk.packed.Read(at, out);
  }
  const RawRows rows = KindOf(chunk, out);
  ClearNulls(chunk, at, out);
  return rows;
}

RawRows Column::ReadRawAt(size_t first, std::span<const uint16_t> at, std::span<int64_t> out) const {
  if (at.empty() || out.empty() || first + at.front() >= size_) return {};
  const size_t in_chunk = (first + at.front()) % kChunkRows;
  const ColumnChunk& chunk = ChunkOf(first + at.front());
  // Where the chunk's first row is relative to `first`: before or after it.
  const size_t begin = first + at.front() - in_chunk;
  size_t count = std::min(at.size(), out.size());
  while (first + at[count - 1] >= begin + chunk.rows) --count;
  out = out.first(count);
  at = at.first(count);
  // Added to a place, gives the row in the chunk; the sum is never negative.
  const size_t shift = first - begin;
  if (chunk.raw_doubles) {
    for (size_t row = 0; row < count; ++row) out[row] = std::bit_cast<int64_t>(chunk.doubles[shift + at[row]]);
  } else {
    chunk.packed.ReadAt(shift, at, out);
  }
  const RawRows rows = KindOf(chunk, out);
  if (!chunk.has_nulls) return rows;
  for (size_t row = 0; row < count; ++row) {
    if (chunk.IsNull(shift + at[row])) out[row] = 0;
  }
  return rows;
}

std::optional<base::Value> Column::ConstantValue() const {
  if (size_ == 0) return std::nullopt;
  const base::Value first = At(0);
  for (const ColumnChunk& chunk : chunks_) {
    const bool varies = chunk.raw_doubles || chunk.has_nulls || chunk.packed.MemoryBytes() > 0;
    if (varies && chunk.rows > 1) return std::nullopt;
  }
  for (size_t row = kChunkRows; row < size_; row += kChunkRows) {
    if (At(row) != first) return std::nullopt;
  }
  return first;
}

Column Column::Gather(std::span<const uint32_t> order) const {
  if (const auto constant = ConstantValue()) return Constant(*constant, order.size());
  Column gathered;
  gathered.pool_ = pool_;
  gathered.text_codes_ = text_codes_;
  gathered.size_ = order.size();
  const TextPool empty;
  const TextPool& pool = pool_ ? *pool_ : empty;
  RowGatherer gatherer(chunks_, size_);
  ChunkBuilder builder;
  for (; !order.empty(); order = order.subspan(std::min(order.size(), kChunkRows))) {
    const auto part = order.first(std::min(order.size(), kChunkRows));
    if (gatherer.Covers(part)) {
      gathered.chunks_.push_back(gatherer.Gather(part));
      continue;
    }
    for (const uint32_t row : part) {
      if (row >= size_)
        builder.AddNull();
      else
        builder.AddFrom(ChunkOf(row), row % kChunkRows);
    }
    gathered.chunks_.push_back(builder.Finish(pool));
  }
  return gathered;
}

size_t Column::MemoryBytes() const {
  size_t bytes = pool_ ? pool_->MemoryBytes() : 0;
  for (const ColumnChunk& chunk : chunks_) bytes += chunk.MemoryBytes();
  return bytes;
}

}  // namespace stockbook::columns
