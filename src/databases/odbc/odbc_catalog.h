// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "databases/dialect/schema.h"
#include "databases/execution/readable_tables.h"
#include "databases/odbc/odbc_session.h"

namespace stockbook::databases {

// A table as its driver describes it.
struct OdbcTable {
  TableSchema schema;
  std::vector<std::string> declared;  // of each column, a type that the embedded engine would give it
  std::vector<bool> whole;            // whether the engine compares it as a whole number
  std::vector<std::string> key;       // the columns of the primary key
  bool is_view = false;

  // The column that is the primary key alone and a whole number.
  std::optional<size_t> WholeKey() const;
};

// The tables and views of a database behind a driver, asked for when they are first used. They are kept until Forget,
// since drivers take long to tell.
class OdbcCatalog {
 public:
  explicit OdbcCatalog(std::string_view more_tables) : readable_(more_tables) {}

  void Forget() { tables_.clear(); }
  bool MayRead(std::string_view name) const { return readable_.Contains(name); }
  // Ignoring ASCII case; nullptr when there is no such table. Valid until Forget. Throws platform::Error, also for a
  // table that may not be read.
  const OdbcTable* Find(OdbcSession& session, std::string_view name);

 private:
  using Row = std::vector<std::string>;
  void ReadTables(OdbcSession& session);
  static void ReadSqliteTable(OdbcSession& session, OdbcTable& table);
  static void AddColumn(OdbcTable& table, const std::string& name, const std::string& declared, bool whole);
  static void ReadColumns(OdbcSession& session, OdbcTable& table);
  static void ReadKey(OdbcSession& session, OdbcTable& table);
  static std::vector<Row> Rows(OdbcSession& session, const OdbcSession::Starter& start);

  ReadableTables readable_;
  std::map<std::string, OdbcTable, std::less<>> tables_;  // by lower-case name; without columns until used
};

}  // namespace stockbook::databases
