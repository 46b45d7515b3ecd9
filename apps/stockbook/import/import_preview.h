// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "stockbook/import/import_mapping.h"
#include "stockbook/import/import_sentence.h"
#include "stockbook/import/open_table.h"
#include "stockbook/import/table_import.h"

namespace stockbook::app {

struct PreviewSettings {
  TableOptions table;
  Direction direction = Direction::Issue;
  std::optional<ImportMapping::Positions> mapping;  // guessed by the names of the columns if it is not given
};

// A line of the table, and why it would be skipped; an empty sentence if it would not be.
struct PreviewLine {
  int64_t line = 0;
  std::vector<std::string> fields;
  ImportSentence problem;
};

// What an import would make of a table.
struct ImportPreview {
  std::vector<std::string> header;
  ImportMapping::Positions mapping;
  std::string encoding;  // "GBK"; "" for a workbook
  char delimiter = 0;    // 0 for a workbook
  std::vector<std::string> sheets;
  std::string sheet;
  DecimalMark decimal = DecimalMark::kPoint;
  bool is_mapped = false;            // product, date and quantity have a column; otherwise nothing is checked
  std::vector<PreviewLine> lines;    // the first ones
  std::vector<PreviewLine> skipped;  // the first ones that would be skipped
  ImportTally tally;                 // of the lines that were read: not whole where there are more than are looked at
};

inline constexpr size_t kPreviewLinesShown = 200;
inline constexpr int64_t kPreviewLinesRead = 50'000;

// Reads the beginning of a table as an import would, and writes nothing. Throws TableError and platform::Error like
// OpenTable.
ImportPreview PreviewTable(const std::string& path, const PreviewSettings& settings);

}  // namespace stockbook::app
