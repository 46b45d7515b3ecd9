// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

#include <span>
#include <string>
#include <vector>

#include "databases/sqlite/database.h"

namespace stockbook::databases {

// Is handed the rows of a query one by one.
class RowVisitor {
 public:
  virtual ~RowVisitor() = default;
  // The values are good until it returns. What it throws ends the query and comes out of VisitRows.
  virtual void Visit(std::span<sqlite3_value* const> values) = 0;
};

struct RowQuery {
  std::vector<std::string> columns;
  std::string rest;  // from FROM on; ?2 and ?3 are the numbers of VisitRows
};

// As a statement of its own.
std::string TextOf(const RowQuery& query);

// Once for each database, before VisitRows.
void RegisterRowVisits(const Database& database);

// Runs the query inside of SQLite: the rows are arguments of a function there. That takes two thirds of the time of
// stepping, for which each value would be fetched out of the row that it stands in. Throws platform::Error.
void VisitRows(const Database& database, const RowQuery& query, RowVisitor& visitor, std::span<const int64_t> numbers);

}  // namespace stockbook::databases
