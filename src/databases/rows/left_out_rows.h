// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <vector>

#include "databases/dialect/statement_needs.h"
#include "databases/execution/interruption.h"
#include "databases/inventory/inventory_schema.h"
#include "databases/rows/row_filters.h"
#include "databases/sqlite/memory_database.h"

namespace stockbook::databases {

// What is known of how a source gave its tables, each by TableName.
struct GivenTables {
  std::array<bool, kTableCount> as_columns = {};
  std::array<bool, kTableCount> may_lack_bills = {};  // tables of lines
};

// What the statement of a journal leaves out of the rows that a source gave, though they are of its subject: bills that
// are in none of the accounting periods, and lines whose bill is not there. Borrows everything.
class LeftOutRows {
 public:
  LeftOutRows(const MemoryDatabase& memory, const StatementNeeds& needs, const GivenTables& given,
              Interruption& interruption)
      : memory_(memory), needs_(needs), given_(given), interruption_(interruption) {}

  // Each a sentence for the user: how many, where, and what to do. None where nothing is left out, or where the
  // statement is no journal. Throws platform::Error.
  std::vector<std::string> Remarks() const;

 private:
  // Bills of one kind, and their lines.
  struct Side {
    TableName bills;
    TableName lines;
    std::string last_period;
  };
  struct Found;

  void AddRemarks(const Side& side, std::vector<std::string>& remarks) const;
  bool MissesAny(const Side& side) const;
  Found Find(const Side& side) const;
  bool IsAsColumns(TableName table) const { return given_.as_columns[static_cast<size_t>(table)]; }
  std::string NoPeriods(const Side& side, const Found& found) const;
  std::string WithoutPeriod(const Side& side, const Found& found) const;
  std::string Later(const Side& side, const Found& found) const;
  std::string WithoutBill(const Side& side, const Found& found) const;

  const MemoryDatabase& memory_;
  const StatementNeeds& needs_;
  const GivenTables& given_;
  Interruption& interruption_;
};

}  // namespace stockbook::databases
