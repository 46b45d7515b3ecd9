// SPDX-License-Identifier: MIT
#include "journal/blank_cells.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "columns/block_reader.h"
#include "columns/row_classes.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/columns/column_builder.h"

namespace stockbook::journal {
namespace {

namespace keys = base::keys;

// The column with the rows of `blank`, in ascending order, emptied; nothing when there are none.
std::optional<columns::Column> Without(const columns::Column& column, const std::vector<size_t>& blank) {
  if (blank.empty()) return std::nullopt;
  columns::ColumnBuilder builder;
  std::vector<uint32_t> pool_codes;
  auto next = blank.begin();
  for (size_t row = 0; row < column.size(); ++row) {
    if (next != blank.end() && *next == row) {
      builder.AppendNull();
      ++next;
    } else {
      builder.AppendFrom(column, row, pool_codes);
    }
  }
  return builder.Finish();
}

bool IsZeroDate(const base::Value& value) {
  if (value.IsNull()) return false;
  if (const auto date = value.AsDate()) return date->IsZero();
  const auto number = value.Number();
  return number && *number == 0;
}

// The column with the zeros of the rows whose flag equals `flag` emptied; nothing when there are none. Without flags
// all rows count as 0. Block by block, because a whole column usually has none.
std::optional<columns::Column> WithoutZerosOf(const columns::Column& column, const columns::Column* flags,
                                              double flag) {
  columns::BlockReader<double> numbers(&column);
  columns::BlockReader<double> row_flags(flags);
  std::vector<size_t> blank;
  for (const columns::RowBlock block : columns::RowBlocks(0, column.size())) {
    const auto read = numbers.Read(block);
    if (std::find(read.begin(), read.end(), 0.0) == read.end()) continue;
    const auto of_rows = row_flags.Read(block);
    for (size_t at = 0; at < block.count; ++at) {
      const double row_flag = flags == nullptr ? 0 : of_rows[at];
      if (read[at] == 0 && row_flag == flag && column.At(block.first + at).Number().has_value())
        blank.push_back(block.first + at);
    }
  }
  return Without(column, blank);
}

// The column with its zero dates emptied; nothing when there are none.
std::optional<columns::Column> WithoutZeroDates(const columns::Column& column) {
  std::vector<size_t> blank;
  if (column.HasTextCodes()) {
    const std::vector<uint8_t> zero =
        columns::ClassifyTexts(&column, column.size(), [](std::string_view text) -> uint8_t {
          return !text.empty() && IsZeroDate(base::Value(std::string(text))) ? 1 : 0;
        });
    for (size_t row = 0; row < zero.size(); ++row) {
      if (zero[row] != 0) blank.push_back(row);
    }
    return Without(column, blank);
  }
  constexpr double kLessThanASecond = 1e-5;  // in days
  columns::BlockReader<double> numbers(&column);
  for (const columns::RowBlock block : columns::RowBlocks(0, column.size())) {
    const auto read = numbers.Read(block);
    for (size_t at = 0; at < block.count; ++at) {
      if (std::fabs(read[at]) < kLessThanASecond && IsZeroDate(column.At(block.first + at)))
        blank.push_back(block.first + at);
    }
  }
  return Without(column, blank);
}

}  // namespace

void BlankZeroCells(platform::GridTable& grid) {
  const columns::Column* flags = grid.LoadedText(grid.ColIndex(keys::kFlag));
  const auto blank = [&](const char* key, auto without) {
    const int index = grid.ColIndex(key);
    const columns::Column* column = grid.LoadedText(index);
    if (column == nullptr) return;
    if (auto blanked = without(*column)) grid.ReplaceLoadedText(index, std::move(*blanked));
  };
  const auto of_flag = [flags](double flag) {
    return [flags, flag](const columns::Column& column) { return WithoutZerosOf(column, flags, flag); };
  };
  for (const char* key : {keys::kRevQty, keys::kRevAcc}) blank(key, of_flag(0));
  for (const char* key : {keys::kIssQty, keys::kIssAcc}) blank(key, of_flag(1));
  for (const char* key : {keys::kInputDate, keys::kAuditDate, keys::kField6}) blank(key, WithoutZeroDates);
}

}  // namespace stockbook::journal
