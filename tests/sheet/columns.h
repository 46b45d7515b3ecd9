// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/column.h"

namespace stockbook::sheet::test {

inline platform::Column Texts(const std::vector<std::string>& texts) {
  platform::ColumnBuilder builder;
  for (const std::string& text : texts) builder.AppendText(text);
  return builder.Finish();
}

inline platform::Column Doubles(const std::vector<double>& numbers) {
  platform::ColumnBuilder builder;
  for (const double number : numbers) builder.AppendDouble(number);
  return builder.Finish();
}

inline platform::Column Numbers(int64_t count) {
  platform::ColumnBuilder builder;
  for (int64_t number = 0; number < count; ++number) builder.AppendInteger(number);
  return builder.Finish();
}

// `rows` texts in runs of equal ones: 200001, 200002, ... as many as `periods`.
inline platform::Column Periods(int64_t rows, int64_t periods) {
  platform::ColumnBuilder builder;
  for (int64_t row = 0; row < rows; ++row) builder.AppendText(std::to_string(200001 + row * periods / rows));
  return builder.Finish();
}

template <typename... Columns>
std::vector<platform::Column> Together(Columns... columns) {
  std::vector<platform::Column> all;
  (all.push_back(std::move(columns)), ...);
  return all;
}

}  // namespace stockbook::sheet::test
