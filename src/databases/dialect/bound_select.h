// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "databases/dialect/ast.h"
#include "databases/dialect/typed_sql.h"

namespace stockbook::databases {

// A column of a result.
struct ResultColumn {
  std::string name;
  ValueClass cls = ValueClass::kAny;
};

// One step of a FROM that adds a table to those before it: `new_column` of the table equals `old_column` of one of
// them. Steps that are not of this kind have no columns.
struct JoinStep {
  JoinType type = JoinType::kInner;
  size_t source = 0;
  const BoundColumn* old_column = nullptr;
  const BoundColumn* new_column = nullptr;
};

// A SELECT with its names resolved, before it becomes text. Owns what its expressions point at.
struct BoundSelect {
  std::unique_ptr<Scope> scope;
  bool distinct = false;
  bool aggregated = false;
  std::optional<uint64_t> top;
  std::vector<ResultColumn> columns;
  std::vector<TypedSql> outputs;  // canonical
  std::string from;
  bool chained = false;  // one table after the other, joined by `joins`
  std::vector<JoinStep> joins;
  std::vector<TypedSql> conditions;    // of WHERE, all of which must hold
  std::vector<std::string> groups;     // as they compare with other expressions
  std::vector<TypedSql> group_values;  // canonical
  std::string having;
  std::vector<std::string> order;    // of a single SELECT, written out
  std::vector<TypedSql> order_keys;  // the keys of the ORDER BY itself, canonical
  std::vector<bool> descending;      // of each key
  std::vector<TypedSql> row_keys;    // what tells rows with equal keys apart, where rows have no numbers
  bool ordered_by_rows = false;      // `order` ends with the row numbers or row keys of all tables
};

}  // namespace stockbook::databases
