// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "end_to_end/journal_columns.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::end_to_end {

struct ShownRow {
  bool node = false;
  int level = 0;
  bool hidden = false;
  int height_twips = 0;
  Cells text;
  Cells display;
};

// A journal as the program outputs it.
struct ShownJournal {
  std::string caption;
  std::vector<ColumnDescription> columns;
  std::vector<std::string> notify;
  std::vector<int> process;
  std::vector<ShownRow> rows;
};

// Columns and rows of a loaded grid.
ShownJournal FromGrid(const sheet::GridSheet& grid);
// The lines of an export in NDJSON; every line must be an object with exactly the documented members.
ShownJournal FromNdjson(std::string_view lines);

}  // namespace stockbook::end_to_end
