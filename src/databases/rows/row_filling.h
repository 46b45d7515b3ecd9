// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "databases/dialect/statement_needs.h"
#include "databases/execution/interruption.h"
#include "databases/inventory/inventory_schema.h"
#include "databases/rows/left_out_rows.h"
#include "databases/rows/table_rows.h"
#include "databases/sqlite/memory_database.h"
#include "stockbook/databases/rows/row_source.h"

namespace stockbook::databases {

// Puts what one statement reads of a source into a database in memory, which is empty before. Borrows everything.
class RowFilling {
 public:
  RowFilling(RowSource& source, const MemoryDatabase& memory, const StatementNeeds& needs, Interruption& interruption)
      : source_(source), memory_(memory), needs_(needs), interruption_(interruption) {}

  // Throws platform::Error: with the words of what the source throws, or because what runs has to end.
  void Fill();
  // Of what was filled, what the statement leaves out: see LeftOutRows.
  std::vector<std::string> Remarks() const { return LeftOutRows(memory_, needs_, given_, interruption_).Remarks(); }

 private:
  bool IsNeeded(TableName table) const { return needs_.Find(InventoryTableOf(table).name) != nullptr; }
  TableRows Create(TableName table) const { return {memory_, table, needs_, interruption_}; }
  // Whether the source has the table as columns.
  bool AddColumns(TableName table, const RowFilter& filter, TableRows& rows);
  void FillBills(TableName bills, TableName lines);
  // Of the bills and of the lines, what is not there as columns.
  void TakeLines(TableName lines, const RowFilter& filter, std::optional<TableRows>& bill_rows,
                 std::optional<TableRows>& line_rows);
  void FillTable(TableName table);
  void AddMasters(TableName table, const RowFilter& filter, TableRows& rows);
  void AddClasses(ClassTree tree, TableRows& rows);
  void AddPeriods(TableRows& rows);
  void AddBalances(BalanceOwner owner, const RowFilter& filter, TableRows& rows);

  // Throws once what runs has to end; for rows that do not become rows of a table.
  void CheckRow();

  RowSource& source_;
  const MemoryDatabase& memory_;
  const StatementNeeds& needs_;
  Interruption& interruption_;
  GivenTables given_;
};

// Runs a call of the source; what it throws becomes a platform::Error with its words.
void AskSource(const std::function<void()>& call);

}  // namespace stockbook::databases
