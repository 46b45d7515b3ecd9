// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "databases/dialect/statement_needs.h"
#include "databases/odbc/odbc_catalog.h"
#include "databases/odbc/odbc_session.h"
#include "databases/odbc/odbc_settings.h"
#include "databases/sqlite/embedded_connection.h"
#include "databases/sqlite/memory_database.h"

namespace stockbook::databases {

// The way for every database whose language nobody translates to: what a statement reads of its tables is copied by the
// plainest of queries into memory, where the embedded engine runs the statement. So it means what it means there,
// whatever the database. Costs the reading of the tables, less what conditions on whole numbers keep out.
class OdbcMirror {
 public:
  OdbcMirror(OdbcSession& session, OdbcCatalog& catalog) : session_(session), catalog_(catalog) {}

  // Copies what the statement reads and is not there. Throws platform::Error.
  void Copy(std::string_view statement, Dialect dialect);
  // The copy as a database of its own.
  std::unique_ptr<EmbeddedConnection> Open(const OdbcSettings& settings, const Interruption& interruption) const;

 private:
  void CopyTable(const OdbcTable& table, const TableNeeds& needs, const std::vector<size_t>& columns);
  std::string Selecting(const OdbcTable& table, const TableNeeds& needs, const std::vector<size_t>& columns) const;
  std::string SelectedColumn(const OdbcTable& table, size_t column) const;
  std::string Conditions(const OdbcTable& table, const TableNeeds& needs) const;
  std::string Order(const OdbcTable& table) const;
  std::string Quoted(std::string_view name) const;

  OdbcSession& session_;
  OdbcCatalog& catalog_;
  MemoryDatabase memory_;
};

}  // namespace stockbook::databases
