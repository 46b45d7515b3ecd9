// SPDX-License-Identifier: MIT
#include "journal/blank_cells.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "base/column_keys.h"
#include "columns/block_reader.h"
#include "columns/column_builder.h"

namespace stockbook::journal {
namespace {

namespace keys = base::keys;

// The column with the rows emptied for which `blank(row)` holds; nothing when there are none.
template <typename Blank>
std::optional<columns::Column> Without(const columns::Column& column, Blank blank) {
  size_t first = 0;
  while (first < column.size() && !blank(first)) ++first;
  if (first == column.size()) return std::nullopt;
  columns::ColumnBuilder builder;
  std::vector<uint32_t> pool_codes;
  for (size_t row = 0; row < column.size(); ++row) {
    if (row >= first && blank(row))
      builder.AppendNull();
    else
      builder.AppendFrom(column, row, pool_codes);
  }
  return builder.Finish();
}

bool IsZeroDate(const base::Value& value) {
  if (value.IsNull()) return false;
  if (const auto date = value.AsDate()) return date->IsZero();
  const auto number = value.Number();
  return number && *number == 0;
}

// Whether any row of the column reads as the number 0; block by block, because a whole column usually has none.
bool HasZeros(const columns::Column& column) {
  columns::BlockReader<double> reader(&column);
  for (const columns::RowBlock block : columns::RowBlocks(0, column.size())) {
    const auto numbers = reader.Read(block);
    if (std::find(numbers.begin(), numbers.end(), 0.0) != numbers.end()) return true;
  }
  return false;
}

// The column with the zeros of the rows whose flag equals `flag` emptied; nothing when there are none. Without flags
// all rows count as 0.
std::optional<columns::Column> WithoutZerosOf(const columns::Column& column, const columns::Column* flags,
                                              double flag) {
  if (!HasZeros(column)) return std::nullopt;
  std::vector<double> numbers(column.size());
  std::vector<double> row_flags(column.size());
  column.ReadNumbers(0, numbers);
  if (flags != nullptr) flags->ReadNumbers(0, row_flags);
  return Without(column, [&](size_t row) {
    return numbers[row] == 0 && row_flags[row] == flag && column.At(row).Number().has_value();
  });
}

// The column with its zero dates emptied; nothing when there are none.
std::optional<columns::Column> WithoutZeroDates(const columns::Column& column) {
  if (column.HasTextCodes()) {
    std::vector<char> zero(column.TextCodeCount());
    bool any = false;
    for (uint32_t code = 1; code < zero.size(); ++code) {
      const base::Value text{std::string(column.TextOfCode(code))};
      zero[code] = IsZeroDate(text) ? 1 : 0;
      any = any || zero[code] != 0;
    }
    if (!any) return std::nullopt;
    std::vector<uint32_t> codes(column.size());
    column.ReadTextCodes(0, codes);
    return Without(column, [&](size_t row) { return zero[codes[row]] != 0; });
  }
  if (!HasZeros(column)) return std::nullopt;
  return Without(column, [&](size_t row) { return IsZeroDate(column.At(row)); });
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
