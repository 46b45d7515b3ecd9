// SPDX-License-Identifier: MIT
#include "contract/postgres_copy.h"

#include <sqlite3.h>

#include <vector>

#include "base/text.h"
#include "databases/dialect/typed_sql.h"
#include "databases/dialect/value_class.h"

namespace stockbook::testing {
namespace {

using databases::QuotedName;
using databases::QuotedText;
using databases::ValueClass;

class Query {
 public:
  Query(const DatabaseFile& file, const std::string& sql) {
    sqlite3_prepare_v2(file.handle(), sql.c_str(), -1, &handle_, nullptr);
  }
  ~Query() { sqlite3_finalize(handle_); }
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;

  bool Step() { return sqlite3_step(handle_) == SQLITE_ROW; }
  std::string Text(int column) const {
    const auto* text = sqlite3_column_text(handle_, column);
    return text == nullptr ? "" : reinterpret_cast<const char*>(text);
  }
  bool IsNull(int column) const { return sqlite3_column_type(handle_, column) == SQLITE_NULL; }
  int Columns() const { return sqlite3_column_count(handle_); }

 private:
  sqlite3_stmt* handle_ = nullptr;
};

const char* TypeOf(ValueClass cls) {
  switch (cls) {
    case ValueClass::kInteger:
      return "bigint";
    case ValueClass::kReal:
      return "double precision";
    case ValueClass::kMoney:
      return "numeric(19,4)";
    case ValueClass::kDate:
      return "timestamp";
    default:
      return "text";
  }
}

std::string CopyOfTable(const DatabaseFile& file, const std::string& table) {
  std::string columns;
  std::string keys;
  for (Query info(file, "PRAGMA table_info(" + QuotedName(table) + ")"); info.Step();) {
    columns += (columns.empty() ? "" : ", ") + QuotedName(info.Text(1)) + " " +
               TypeOf(databases::ClassOfDeclaredType(info.Text(2)));
    if (info.Text(5) != "0") keys += (keys.empty() ? "" : ", ") + QuotedName(info.Text(1));
  }
  if (!keys.empty()) columns += ", PRIMARY KEY (" + keys + ")";
  std::string sql = "CREATE TABLE " + QuotedName(table) + "(" + columns + ");\n";
  std::string rows;
  for (Query values(file, "SELECT * FROM " + QuotedName(table) + " ORDER BY rowid"); values.Step();) {
    rows += rows.empty() ? "(" : ",\n(";
    for (int column = 0; column < values.Columns(); ++column) {
      rows += column == 0 ? "" : ", ";
      rows += values.IsNull(column) ? "NULL" : QuotedText(values.Text(column));
    }
    rows += ")";
  }
  if (!rows.empty()) sql += "INSERT INTO " + QuotedName(table) + " VALUES\n" + rows + ";\n";
  return sql;
}

}  // namespace

std::string PostgresCopyOf(const DatabaseFile& file) {
  std::string sql;
  for (Query tables(file, "SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite%'");
       tables.Step();) {
    sql += CopyOfTable(file, tables.Text(0));
  }
  return sql;
}

}  // namespace stockbook::testing
