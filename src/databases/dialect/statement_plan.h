// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "databases/dialect/select_translator.h"

namespace stockbook::databases {

// One SELECT of a plan. Its outputs are those of the result, in the classes of the result, then the hidden sort keys.
struct PlanArm {
  BoundSelect select;
  std::vector<TypedSql> outputs;
  std::string sql;  // the outputs as c0, c1, …, without any order
};

struct PlanKey {
  size_t output = 0;
  bool descending = false;
};

// What a statement asks for when it is one SELECT with an ORDER BY, or the duplicate-free union of several, ordered by
// columns of the result: rows that can be collected in any way and then sorted as stated here.
struct StatementPlan {
  std::vector<PlanArm> arms;
  std::vector<PlanKey> keys;
  size_t result_columns = 0;
  std::vector<ResultColumn> columns;  // of the result
  // UNION: rows equal in all columns are one; rows with equal keys come in the order of their columns from the first
  // on. Otherwise there is one arm, and rows with equal keys come in the order of the first table's row numbers.
  bool distinct_union = false;
};

// Nothing when the statement is of another shape, or reads anything but plain stored tables.
std::optional<StatementPlan> PlanStatement(const Query& query, const Target& target, const TableFinder& find_table);

}  // namespace stockbook::databases
