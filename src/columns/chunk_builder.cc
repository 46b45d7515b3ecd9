// SPDX-License-Identifier: MIT
#include "stockbook/columns/chunk_builder.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <string>
#include <unordered_map>

#include "base/digits.h"
#include "stockbook/base/seeded_hash.h"
#include "stockbook/columns/text_pool.h"

namespace stockbook::columns {
namespace {

constexpr int kMostDecimals = 6;
constexpr double kExactIntegers = 2251799813685248.0;  // 2^51

// std::nearbyint for numbers below 2^51, without a call: adding 1.5 x 2^52 leaves no room for a fraction.
double RoundSmall(double number) {
  constexpr double kNoFraction = 6755399441055744.0;
  return (number + kNoFraction) - kNoFraction;
}

// The fewest decimals, up to kMostDecimals, with which the number is exactly an integer over a power of ten; -1 for
// none.
int DecimalsOf(double number, int at_least) {
  for (int decimals = at_least; decimals <= kMostDecimals; ++decimals) {
    const double scaled = number * base::kDoublePowersOfTen[static_cast<size_t>(decimals)];
    if (std::fabs(scaled) < kExactIntegers &&
        RoundSmall(scaled) / base::kDoublePowersOfTen[static_cast<size_t>(decimals)] == number)
      return decimals;
  }
  return -1;
}

std::string DictionaryKey(ChunkType type, int64_t number) {
  std::string key(sizeof(number) + 1, static_cast<char>(type));
  std::memcpy(key.data() + 1, &number, sizeof(number));
  return key;
}

base::Value ValueOf(ChunkType type, int64_t number, const TextPool& texts) {
  switch (type) {
    case ChunkType::kInteger:
      return base::Value(number);
    case ChunkType::kDouble:
      return base::Value(std::bit_cast<double>(number));
    case ChunkType::kMoney:
      return base::Value(base::Money::FromUnits(number));
    case ChunkType::kDate:
      return base::Value(base::Date::FromSeconds(number));
    case ChunkType::kText:
      return base::Value(std::string(texts.TextOf(static_cast<uint32_t>(number))));
    case ChunkType::kNull:
    case ChunkType::kMixed:
      break;
  }
  return {};
}

}  // namespace

void ChunkBuilder::MarkType(ChunkType type) {
  if (type_ == type && types_.empty()) return;
  if (type_ == ChunkType::kNull) {
    type_ = type;
    return;
  }
  if (types_.empty()) types_.assign(rows_, type_);
  types_.resize(rows_, type_);
  types_.push_back(type);
  type_ = type;
}

void ChunkBuilder::AddNull() {
  if (!has_nulls_) {
    has_nulls_ = true;
    nulls_.assign(rows_ / 64 + 1, 0);
  }
  nulls_.resize(rows_ / 64 + 1);
  nulls_[rows_ / 64] |= uint64_t{1} << (rows_ % 64);
  // A neighbour's value keeps the packed range narrow.
  numbers_.push_back(numbers_.empty() ? 0 : numbers_.back());
  if (!types_.empty()) types_.resize(rows_ + 1, type_);
  ++rows_;
}

void ChunkBuilder::AddCounted(ChunkType type, int64_t number) {
  if (type_ != type || !types_.empty()) MarkType(type);
  numbers_.push_back(number);
  ++rows_;
}

void ChunkBuilder::AddDoubles(std::span<const double> numbers) {
  if (numbers.empty()) return;
  if (type_ != ChunkType::kDouble || !types_.empty()) {
    for (const double number : numbers) AddDouble(number);
    return;
  }
  const size_t old_size = numbers_.size();
  numbers_.resize(old_size + numbers.size());
  std::memcpy(numbers_.data() + old_size, numbers.data(), numbers.size_bytes());
  rows_ += static_cast<uint32_t>(numbers.size());
}

void ChunkBuilder::AddCounted(ChunkType type, std::span<const int64_t> numbers) {
  if (numbers.empty()) return;
  if (type_ != type || !types_.empty()) {
    for (const int64_t number : numbers) AddCounted(type, number);
    return;
  }
  numbers_.insert(numbers_.end(), numbers.begin(), numbers.end());
  rows_ += static_cast<uint32_t>(numbers.size());
}

void ChunkBuilder::AddDouble(double number) { AddCounted(ChunkType::kDouble, std::bit_cast<int64_t>(number)); }

void ChunkBuilder::AddValue(const base::Value& value) {
  if (const auto* integer = value.As<int64_t>()) return AddInteger(*integer);
  if (const auto* number = value.As<double>()) return AddDouble(*number);
  if (const auto* money = value.As<base::Money>()) return AddMoney(*money);
  if (const auto* date = value.As<base::Date>()) return AddDate(*date);
  if (value.IsNull()) return AddNull();
  // A text in a mixed chunk has no code in the column's pool.
  if (values_.empty() || values_.back() != value) values_.push_back(value);
  AddCounted(ChunkType::kMixed, static_cast<int64_t>(values_.size()) - 1);
}

void ChunkBuilder::AddFrom(const ColumnChunk& source, size_t row) {
  if (source.IsNull(row))
    AddNull();
  else if (source.type == ChunkType::kMixed)
    AddValue(source.dictionary[static_cast<size_t>(source.packed.At(row))]);
  else if (source.type == ChunkType::kDouble)
    AddDouble(source.DoubleAt(row));
  else
    AddCounted(source.type, source.packed.At(row) * source.unit);
}

void ChunkBuilder::FinishDoubles(ColumnChunk& chunk) {
  int decimals = 0;
  double largest = 0;
  double last = 0;
  for (const int64_t bits : numbers_) {
    const auto number = std::bit_cast<double>(bits);
    if (number == last) continue;
    last = number;
    decimals = DecimalsOf(number, decimals);
    if (decimals < 0) break;
    largest = std::max(largest, std::fabs(number));
  }
  if (decimals < 0 || largest * base::kDoublePowersOfTen[static_cast<size_t>(decimals)] >= kExactIntegers) {
    chunk.raw_doubles = true;
    chunk.doubles.resize(numbers_.size());
    std::memcpy(chunk.doubles.data(), numbers_.data(), numbers_.size() * sizeof(double));
    return;
  }
  for (int64_t& bits : numbers_) {
    bits = static_cast<int64_t>(
        RoundSmall(std::bit_cast<double>(bits) * base::kDoublePowersOfTen[static_cast<size_t>(decimals)]));
  }
  chunk.unit = static_cast<int64_t>(base::kDoublePowersOfTen[static_cast<size_t>(decimals)]);
  chunk.packed = PackedIntegers(numbers_);
}

void ChunkBuilder::FinishCounted(ColumnChunk& chunk) {
  // Whole days, and whole or hundredth currency units, are stored without their common factor.
  const std::span<const int64_t> units = type_ == ChunkType::kDate    ? std::span<const int64_t>(kDateUnits)
                                         : type_ == ChunkType::kMoney ? std::span<const int64_t>(kMoneyUnits)
                                                                      : std::span<const int64_t>();
  for (const int64_t unit : units) {
    if (!std::all_of(numbers_.begin(), numbers_.end(), [unit](int64_t number) { return number % unit == 0; })) continue;
    for (int64_t& number : numbers_) number /= unit;
    chunk.unit = unit;
    break;
  }
  chunk.packed = PackedIntegers(numbers_);
}

ColumnChunk ChunkBuilder::FinishMixed(const TextPool& texts) {
  ColumnChunk chunk;
  chunk.type = ChunkType::kMixed;
  types_.resize(rows_, type_);
  std::unordered_map<std::string, int64_t, base::SeededHash> codes;
  for (size_t row = 0; row < rows_; ++row) {
    const auto [found, is_new] =
        codes.try_emplace(DictionaryKey(types_[row], numbers_[row]), static_cast<int64_t>(codes.size()));
    if (is_new) {
      chunk.dictionary.push_back(types_[row] == ChunkType::kMixed ? values_[static_cast<size_t>(numbers_[row])]
                                                                  : ValueOf(types_[row], numbers_[row], texts));
    }
    numbers_[row] = found->second;
  }
  chunk.packed = PackedIntegers(numbers_);
  return chunk;
}

ColumnChunk ChunkBuilder::Finish(const TextPool& texts) {
  ColumnChunk chunk;
  if (!types_.empty() || type_ == ChunkType::kMixed) {
    chunk = FinishMixed(texts);
  } else {
    chunk.type = type_;
    if (type_ == ChunkType::kDouble)
      FinishDoubles(chunk);
    else if (type_ != ChunkType::kNull)
      FinishCounted(chunk);
  }
  chunk.rows = rows_;
  if (has_nulls_ && chunk.type != ChunkType::kNull) {
    chunk.has_nulls = true;
    nulls_.resize((rows_ + 63) / 64);
    chunk.nulls = nulls_;
  }
  rows_ = 0;
  type_ = ChunkType::kNull;
  has_nulls_ = false;
  numbers_.clear();
  types_.clear();
  values_.clear();
  nulls_.clear();
  return chunk;
}

}  // namespace stockbook::columns
