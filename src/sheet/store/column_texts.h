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

// Reads the displayed texts of many records of a column at once, several times as fast as one by one: stored texts are
// not copied, a repeated value is formatted once, and numbers in common formats are written straight from their
// integers. Borrows the store, which must not change meanwhile.
class ColumnTexts {
 public:
  static constexpr size_t kMostRecords = 256;

  ColumnTexts(const Store& store, const SheetColumn& column);
  ColumnTexts(const ColumnTexts&) = delete;
  ColumnTexts& operator=(const ColumnTexts&) = delete;

  // The displayed texts of `count` (at most kMostRecords) records from `first` on, valid until the next call. It is
  // safe to read columns::TextPool::kSlack bytes beyond the end of each.
  std::span<const std::string_view> Read(int64_t first, size_t count);

 private:
  // A text in made_; its address is known only once all texts are made.
  struct Made {
    size_t record = 0;  // index among those read
    size_t at = 0;
    size_t size = 0;
  };

  // Reads at least one record and at most `count`; returns how many.
  size_t ReadSome(size_t record, size_t place, size_t count);
  void ReadRows(size_t first, std::span<const int64_t> raw, const columns::RawRows& rows, size_t place);
  // The beginning of the number's text, which ends at `end`; nullptr if the number is not of the common shape.
  char* WriteNumber(int64_t raw, const columns::RawRows& rows, char* end) const;
  // Formats a value of any kind.
  void MakeShown(size_t record, size_t place);

  const Store& store_;
  const SheetColumn& column_;
  const columns::Column* loaded_;
  bool formatted_ = false;
  bool formats_numbers_ = false;
  std::optional<PlainNumber> plain_;  // set if the column's number format is a common one
  bool one_by_one_ = false;
  std::array<std::string_view, kMostRecords> texts_;
  std::array<char, kMostRecords * PlainNumber::kMostBytes + columns::TextPool::kSlack> numbers_{};
  std::vector<Made> made_at_;
  std::string made_;
};

}  // namespace stockbook::sheet
