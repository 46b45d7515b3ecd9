// SPDX-License-Identifier: MIT
#include "journal/blank_cells.h"

#include <algorithm>
#include <vector>

#include "columns/column_builder.h"

namespace stockbook::journal {
namespace {

constexpr size_t kBlockRows = 2048;

// The column without the rows for which `blank(row)` holds, from the first such row on.
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

// Whether any row of the column reads as the number 0; block by block, since a whole column has none as a rule.
bool HasZeros(const columns::Column& column) {
  std::vector<double> block(kBlockRows);
  for (size_t first = 0; first < column.size(); first += kBlockRows) {
    const auto rows = std::span(block).first(std::min(kBlockRows, column.size() - first));
    column.ReadNumbers(first, rows);
    if (std::find(rows.begin(), rows.end(), 0.0) != rows.end()) return true;
  }
  return false;
}

}  // namespace

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

}  // namespace stockbook::journal
