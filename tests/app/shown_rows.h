// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "base/text.h"
#include "stockbook/platform/grid.h"

namespace stockbook::app {

// The text without the commas between two digits, letter by letter.
inline std::string WithoutCommas(const std::string& text) {
  const auto digit = [&](size_t at) { return at < text.size() && text[at] >= '0' && text[at] <= '9'; };
  std::string plain;
  for (size_t at = 0; at < text.size(); ++at) {
    if (text[at] != ',' || at == 0 || !digit(at - 1) || !digit(at + 1)) plain += text[at];
  }
  return plain;
}

// Whether a cell that shows the text has the word, capitals or not.
inline bool ShowsWord(const std::string& shown, const std::string& word) {
  const std::string text = base::AsciiLower(shown);
  const std::string small = base::AsciiLower(word);
  return text.find(small) != std::string::npos || WithoutCommas(text).find(small) != std::string::npos;
}

// The rows that show every word in some column, found the simple way.
template <typename Grid>
std::vector<int> RowsThatShow(const Grid& grid, const std::vector<std::string>& words) {
  std::vector<int> rows;
  for (int row = grid.FixedRows(); row < grid.Rows(); ++row) {
    std::vector<std::string> texts;
    for (int column = grid.FixedCols(); column < grid.Cols(); ++column) {
      if (!grid.ColHidden(column)) texts.push_back(grid.DisplayText(row, column));
    }
    const bool all = std::all_of(words.begin(), words.end(), [&](const std::string& word) {
      return std::any_of(texts.begin(), texts.end(), [&](const std::string& text) { return ShowsWord(text, word); });
    });
    if (all) rows.push_back(row);
  }
  return rows;
}

}  // namespace stockbook::app
