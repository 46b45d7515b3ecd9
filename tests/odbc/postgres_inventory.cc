// SPDX-License-Identifier: MIT
#include "odbc/postgres_inventory.h"

#include <functional>

#include "databases/dialect/typed_sql.h"
#include "databases/dialect/value_class.h"

namespace stockbook::testing {
namespace {

using databases::QuotedName;
using databases::QuotedText;
using databases::ValueClass;

void ForRows(const DatabaseFile& file, const std::string& sql, const std::function<void(sqlite3_stmt*)>& what) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(file.handle(), sql.c_str(), -1, &statement, nullptr);
  while (sqlite3_step(statement) == SQLITE_ROW) what(statement);
  sqlite3_finalize(statement);
}

std::string TextOf(sqlite3_stmt* statement, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
  return text == nullptr ? "" : text;
}

const char* ServerType(const std::string& declared) {
  switch (databases::ClassOfDeclaredType(declared)) {
    case ValueClass::kMoney:
      return "numeric(19,4)";
    case ValueClass::kDate:
      return "timestamp";
    case ValueClass::kReal:
      return "double precision";
    case ValueClass::kInteger:
      return "bigint";
    default:
      return "text";
  }
}

std::string Creation(const DatabaseFile& file, const std::string& table) {
  std::string columns;
  ForRows(file, "PRAGMA table_info(" + QuotedName(table) + ")", [&](sqlite3_stmt* row) {
    columns.append(columns.empty() ? "" : ",").append(QuotedName(TextOf(row, 1))).append(" ");
    columns.append(ServerType(TextOf(row, 2))).append(sqlite3_column_int(row, 5) != 0 ? " PRIMARY KEY" : "");
  });
  return "CREATE TABLE " + QuotedName(table) + "(" + columns + ");";
}

std::string Insertions(const DatabaseFile& file, const std::string& table) {
  std::string sql;
  ForRows(file, "SELECT * FROM " + QuotedName(table), [&](sqlite3_stmt* row) {
    std::string values;
    for (int column = 0; column < sqlite3_column_count(row); ++column) {
      const bool null = sqlite3_column_type(row, column) == SQLITE_NULL;
      values.append(column == 0 ? "" : ",").append(null ? "NULL" : QuotedText(TextOf(row, column)));
    }
    sql += "INSERT INTO " + QuotedName(table) + " VALUES(" + values + ");";
  });
  return sql;
}

}  // namespace

void CopyToPostgres(const DatabaseFile& file, const PostgresServer& server) {
  std::string sql = "DROP SCHEMA public CASCADE; CREATE SCHEMA public;";
  ForRows(file, "SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite%'",
          [&](sqlite3_stmt* row) { sql += Creation(file, TextOf(row, 0)) + Insertions(file, TextOf(row, 0)); });
  server.Run(sql);
}

}  // namespace stockbook::testing
