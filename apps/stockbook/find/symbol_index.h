// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "stockbook/find/row_bits.h"

namespace stockbook::app {

// Which characters the texts of each record hold, and which of the characters of numbers follow each other in them, so
// that a word need be looked for only where it can be. Of the characters of numbers (digits, point, minus) single ones
// and pairs are known exactly for each record, and two digits around a point; groups of three are
// known by a hash, for each record and, more coarsely, for each single text; other characters by a hash into classes,
// exactly as long as a class has met one character alone. Commas between digits do not count, and capitals count as
// small letters. Costs at most 56 bytes a record and 4 a text; adding a text costs a few instructions a byte.
class SymbolIndex {
 public:
  // What a narrowing says about the records that are left.
  enum class Answer { kMayHoldIt, kHoldIt };

  // Each record has a text in each of the columns.
  SymbolIndex(size_t records, size_t columns);

  // Adds the record's text in a column; records come in ascending order, Finish comes after the last one. Returns
  // whether the text has characters that do not make up numbers.
  bool Add(size_t record, size_t column, std::string_view text) {
    if (record / RowBits::kWordRows != block_) Flush(record / RowBits::kWordRows);
    return AddTo(rows_[record % RowBits::kWordRows], signatures_[record * columns_ + column], text);
  }
  void Finish() { Flush(0); }

  // Drops the records whose texts cannot hold the part, which is in small letters.
  Answer Narrow(std::string_view part, RowBits& rows) const;
  // The signature of a part, and the columns in which the record's text can hold all parts that were signed together:
  static uint32_t SignatureOf(std::string_view part);
  // One bit for each column from the first one on; columns after the 64th share the last bit.
  uint64_t ColumnsThatCanHold(size_t record, uint32_t signature) const {
    const uint32_t* const texts = signatures_.data() + record * columns_;
    uint64_t can = 0;
    for (size_t column = 0; column < columns_; ++column)
      can |= uint64_t{(texts[column] & signature) == signature} << std::min<size_t>(column, 63);
    return can;
  }
  size_t MemoryBytes() const;

 private:
  static constexpr size_t kSymbols = 12;
  static constexpr size_t kPairs = kSymbols;
  static constexpr size_t kAroundPoint = kPairs + kSymbols * kSymbols;
  static constexpr size_t kTriples = kAroundPoint + 100;
  static constexpr size_t kTripleClasses = 128;
  static constexpr size_t kOthers = kTriples + kTripleClasses;
  static constexpr size_t kOtherClasses = 64;
  static constexpr size_t kPlanes = kOthers + kOtherClasses;
  static constexpr size_t kWords = kPlanes / 64;
  static constexpr char32_t kShared = 0xFFFFFFFF;
  using Row = std::array<uint64_t, kWords>;

  // Calls visitor.See(plane) for all that the text holds, visitor.Sign(bit) for its groups of three, and before a
  // character of no number visitor.Meet(class, character).
  template <typename Visitor>
  static void Walk(std::string_view text, Visitor& visitor);
  bool AddTo(Row& row, uint32_t& signature, std::string_view text);
  void Flush(size_t next_block);

  size_t records_;
  size_t columns_;
  size_t block_ = 0;
  std::array<Row, RowBits::kWordRows> rows_{};
  std::array<char32_t, kOtherClasses> owners_{};  // 0: nobody yet
  // A bit for each record; empty where no record has it.
  std::vector<std::vector<uint64_t>> planes_;
  std::vector<uint32_t> signatures_;  // record by record
};

}  // namespace stockbook::app
