// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "stockbook/columns/column.h"
#include "stockbook/columns/column_builder.h"

namespace stockbook::sheet::test {

inline columns::Column Texts(const std::vector<std::string>& texts) {
  columns::ColumnBuilder builder;
  for (const std::string& text : texts) builder.AppendText(text);
  return builder.Finish();
}

inline columns::Column Doubles(const std::vector<double>& numbers) {
  columns::ColumnBuilder builder;
  for (const double number : numbers) builder.AppendDouble(number);
  return builder.Finish();
}

inline columns::Column Numbers(int64_t count) {
  columns::ColumnBuilder builder;
  for (int64_t number = 0; number < count; ++number) builder.AppendInteger(number);
  return builder.Finish();
}

// `rows` texts in `periods` runs of equal ones: 200001, 200002, ...
inline columns::Column Periods(int64_t rows, int64_t periods) {
  columns::ColumnBuilder builder;
  for (int64_t row = 0; row < rows; ++row) builder.AppendText(std::to_string(200001 + row * periods / rows));
  return builder.Finish();
}

template <typename... Columns>
std::vector<columns::Column> Together(Columns... columns) {
  std::vector<columns::Column> all;
  (all.push_back(std::move(columns)), ...);
  return all;
}

}  // namespace stockbook::sheet::test
