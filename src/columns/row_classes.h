// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "columns/block_reader.h"

namespace stockbook::columns {

// What `classify` makes of the text of each of the first `rows` rows, asked once for every distinct text where the
// column can tell them apart. No column reads as empty texts.
template <typename Classify>
std::vector<uint8_t> ClassifyTexts(const Column* column, size_t rows, Classify classify) {
  if (column == nullptr) return std::vector<uint8_t>(rows, classify(std::string_view()));
  std::vector<uint8_t> classes(rows);
  if (!column->HasTextCodes()) {
    for (size_t row = 0; row < rows; ++row) classes[row] = classify(column->Text(row));
    return classes;
  }
  std::vector<uint8_t> of_code(column->TextCodeCount());
  for (uint32_t code = 0; code < of_code.size(); ++code) of_code[code] = classify(column->TextOfCode(code));
  BlockReader<uint32_t> reader(column);
  for (const RowBlock block : RowBlocks(0, rows)) {
    const auto codes = reader.Read(block);
    for (size_t at = 0; at < codes.size(); ++at) classes[block.first + at] = of_code[codes[at]];
  }
  return classes;
}

// The same of the rows as numbers; what is none reads as 0, and no column as zeros.
template <typename Classify>
std::vector<uint8_t> ClassifyNumbers(const Column* column, size_t rows, Classify classify) {
  if (column == nullptr) return std::vector<uint8_t>(rows, classify(0.0));
  std::vector<uint8_t> classes(rows);
  BlockReader<double> reader(column);
  for (const RowBlock block : RowBlocks(0, rows)) {
    const auto numbers = reader.Read(block);
    for (size_t at = 0; at < numbers.size(); ++at) classes[block.first + at] = classify(numbers[at]);
  }
  return classes;
}

}  // namespace stockbook::columns
