// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/store/column_texts.h"

namespace stockbook::sheet {

class Sheet;

// Reads rows as they are displayed, some tens of nanoseconds a cell where they are many. Borrows the sheet, which must
// not change meanwhile; several threads may read one sheet, each with an object of its own.
class RowTexts {
 public:
  RowTexts(const Sheet& sheet, const std::vector<int>& columns);
  RowTexts(const RowTexts&) = delete;
  RowTexts& operator=(const RowTexts&) = delete;

  // This many bytes after the end of a text may be read, whatever they contain: copying short texts is fastest without
  // looking at their length.
  static constexpr size_t kSlack = columns::TextPool::kSlack;
  // The text as it was, with that many bytes after it; valid as long as the text stays.
  static std::string_view WithSlack(std::string& text);

  // Gets the texts of a row in the order of the columns, valid until it returns; false when it wants no more.
  using TakeRow = std::function<bool(std::span<const std::string_view> texts)>;
  // Calls `take` for each of the rows [first, last), which are below the fixed ones, hidden rows included. Returns the
  // row after the last one that was taken.
  int ForEachRow(int first, int last, const TakeRow& take);

 private:
  // These return how many rows were taken.
  int64_t ReadRecords(int64_t count, RowId first, const TakeRow& take);
  int64_t ReadInserted(int64_t count, RowId first, const TakeRow& take);

  const Sheet& sheet_;
  std::vector<const SheetColumn*> columns_;
  std::vector<std::unique_ptr<ColumnTexts>> readers_;  // one for each column
  std::vector<std::span<const std::string_view>> blocks_;
  std::vector<std::string_view> row_;
  std::vector<std::string> made_;
  bool wanted_ = true;  // by the taker, so far
};

}  // namespace stockbook::sheet
