// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "databases/dialect/value_class.h"

namespace stockbook::databases {

struct TableColumn {
  std::string name;
  ValueClass cls = ValueClass::kAny;
};

// A table of the database as its catalogue describes it.
struct TableSchema {
  std::string name;
  std::vector<TableColumn> columns;
  // The name that reads the row's own number, or empty where there is none (views, tables without row numbers).
  std::string row_number;
  // Where rows have no numbers: the columns, as they are spelled above, that tell them apart.
  std::vector<std::string> row_keys = {};
  // A stored table whose texts compare byte by byte.
  bool plain = false;
};

// Finds a table by its name, ignoring ASCII case; nullptr when there is no such table. The tables outlive whatever is
// translated with them.
using TableFinder = std::function<const TableSchema*(std::string_view name)>;

}  // namespace stockbook::databases
