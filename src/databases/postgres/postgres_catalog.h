// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "databases/dialect/schema.h"
#include "databases/postgres/postgres_session.h"

namespace stockbook::databases {

// The tables and views that a session sees without naming a schema, and may name in statements. One query reads them,
// once a moment, and only those that a journal or the connection string allows.
class PostgresCatalog {
 public:
  explicit PostgresCatalog(PostgresSession& session) : session_(session) {}

  // Call it before a statement is translated, within a transaction.
  void Refresh();
  // By its exact name, or else ignoring ASCII case; nullptr when there is no such table. It stays valid until Refresh.
  // Throws platform::Error for a table that may not be read, in the same words whether there is one or not.
  const TableSchema* FindTable(std::string_view name) const;

 private:
  void ReadTables();

  PostgresSession& session_;
  std::optional<unsigned long long> moment_;
  std::map<std::string, std::unique_ptr<TableSchema>, std::less<>> tables_;      // by name
  std::map<std::string, const TableSchema*, std::less<>> tables_by_lower_case_;  // the first of the name
};

// The class of a column by the server's name of its type, as format_type writes it.
ValueClass ClassOfPostgresType(std::string_view type);

}  // namespace stockbook::databases
