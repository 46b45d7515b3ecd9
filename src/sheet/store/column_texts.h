// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "sheet/store/store.h"

namespace stockbook::sheet {

// Reads what the records of a column show, many at once and several times as fast as one by one: texts are pointed at,
// a value that repeats is made a text once, and numbers of a common format are written straight from their integers.
// Borrows the store, which must not change meanwhile.
class ColumnTexts {
 public:
  static constexpr size_t kMostRecords = 256;

  ColumnTexts(const Store& store, const SheetColumn& column);
  ColumnTexts(const ColumnTexts&) = delete;
  ColumnTexts& operator=(const ColumnTexts&) = delete;

  // The shown texts of the records from `first` on; at most kMostRecords, valid until the next call. Each may be read
  // columns::TextPool::kSlack bytes beyond its end.
  std::span<const std::string_view> Read(int64_t first, size_t count);

 private:
  // A text in made_, whose place in memory is known only when all are made.
  struct Made {
    size_t record = 0;  // of those read
    size_t at = 0;
    size_t size = 0;
  };

  // Reads at least one record and at most `count`; returns how many.
  size_t ReadSome(size_t record, size_t place, size_t count);
  void ReadRows(size_t first, std::span<const int64_t> raw, const columns::RawRows& rows, size_t place);
  // Where the number's text begins in the slot that ends at `end`; nullptr where it is not of the common shape.
  char* WriteNumber(int64_t raw, const columns::RawRows& rows, char* end) const;
  // Any value's text, by itself.
  void MakeShown(size_t record, size_t place);

  const Store& store_;
  const SheetColumn& column_;
  const columns::Column* loaded_;
  bool formatted_ = false;
  bool formats_numbers_ = false;
  std::optional<PlainNumber> plain_;  // how numbers are shown, where that is of the common shape
  bool one_by_one_ = false;
  std::array<std::string_view, kMostRecords> texts_;
  std::array<char, kMostRecords * PlainNumber::kMostBytes + columns::TextPool::kSlack> numbers_{};
  std::vector<Made> made_at_;
  std::string made_;
};

}  // namespace stockbook::sheet
