// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "databases/table_writer.h"
#include "stockbook/copy/stored_values.h"
#include "stockbook/platform/connection.h"

namespace stockbook::app {

// What was copied of one table, and compared.
struct CopiedTable {
  databases::StoredTable table;
  size_t rows = 0;
  std::vector<ColumnDigest> digests;  // one a column
  std::vector<std::string> added;     // columns that the source lacks; they are empty
  std::vector<std::string> extra;     // columns that an inventory need not have
};

// Called before each portion: a step ("复制", "核对"), a table, and how many of its rows are done.
using ShowProgress = std::function<void(std::string_view step, std::string_view table, size_t done, size_t rows)>;

// Copies all tables of an inventory as of one moment: every column and row, rows in the order of their keys, values
// exactly as they are. Then it reads everything back from what was written and compares rows, sums and checksums of
// each column, and commits. Throws platform::Error, and then nothing is committed: for a table that is missing or has
// keys that are none, for what the target cannot hold, and where something was stored that differs.
std::vector<CopiedTable> CopyInventory(platform::Connection& source, databases::TableWriter& target,
                                       const ShowProgress& show);

}  // namespace stockbook::app
