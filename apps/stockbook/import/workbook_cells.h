// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace stockbook::app {

// Texts that are kept once each, however often they occur. References into it stay.
class TextPool {
 public:
  // The number of the text.
  uint32_t Add(std::string_view text);
  std::string_view At(uint32_t number) const { return *texts_[number]; }

 private:
  std::unordered_map<std::string, uint32_t> numbers_;
  std::vector<const std::string*> texts_;
};

struct WorkbookCell {
  int row = 0;
  int column = 0;
  uint32_t text = 0;  // its number in the pool, never that of an empty one
};

// The cells of one sheet that have a text, in the order of rows and, within these, of columns; each place once.
struct WorkbookSheet {
  std::string name;
  std::vector<WorkbookCell> cells;
};

// The contents of a spreadsheet as texts: numbers with up to 15 digits and a point, dates as yyyy-MM-dd HH:mm:ss,
// results in the place of formulas. Rows and columns count from 0.
struct Workbook {
  TextPool texts;
  std::vector<WorkbookSheet> sheets;
};

// Reads the bytes of an .xlsx file. Throws TableError if it is none, or damaged, or unpacks to more than a gigabyte, or
// if this build has no library for it. `name` is what messages call it.
Workbook ReadWorkbook(std::string_view bytes, const std::string& name);

}  // namespace stockbook::app
