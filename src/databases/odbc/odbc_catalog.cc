// SPDX-License-Identifier: MIT
#include "databases/odbc/odbc_catalog.h"

#include <sqlext.h>

#include <algorithm>

#include "base/number.h"
#include "base/text.h"
#include "databases/dialect/typed_sql.h"
#include "databases/odbc/odbc_text.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

std::string CellText(const OdbcRowset& block, size_t column, size_t row) {
  if (block.IsNull(column, row)) return "";
  std::string text;
  switch (block.columns()[column].carrier) {
    case OdbcCarrier::kInteger:
      return std::to_string(block.IntegerAt(column, row));
    case OdbcCarrier::kText: {
      const auto wide = block.TextAt(column, row);
      AppendUtf8(wide.data(), wide.size(), text);
      return text;
    }
    case OdbcCarrier::kDigits:
      return std::string(block.DigitsAt(column, row));
    case OdbcCarrier::kDouble:
    case OdbcCarrier::kTimestamp:
      return "";
  }
  return text;
}

class OdbcTextRows : public OdbcRowTaker {
 public:
  void Begin(size_t) override { rows.clear(); }
  void Take(const OdbcRowset& block) override {
    for (size_t row = 0; row < block.rows(); ++row) {
      auto& texts = rows.emplace_back();
      for (size_t column = 0; column < block.columns().size(); ++column) texts.push_back(CellText(block, column, row));
    }
  }
  std::vector<std::vector<std::string>> rows;
};

bool IsWholeType(int64_t sql_type) {
  return sql_type == SQL_TINYINT || sql_type == SQL_SMALLINT || sql_type == SQL_INTEGER || sql_type == SQL_BIGINT;
}

// Whether a type can be written into a declaration as it is.
bool IsPlainType(const std::string& name) {
  constexpr std::string_view kWritten = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 ";
  return name.find_first_not_of(kWritten) == std::string::npos;
}

// As a column of the embedded database that holds the same values would be declared.
std::string DeclaredType(int64_t sql_type, const std::string& type_name) {
  const std::string name = base::AsciiLower(type_name);
  if (name.find("money") != std::string::npos || name.find("currency") != std::string::npos) return "MONEY TEXT";
  if (IsWholeType(sql_type) || sql_type == SQL_BIT) return "INTEGER";
  switch (sql_type) {
    case SQL_DECIMAL:
    case SQL_NUMERIC:
      return "MONEY TEXT";
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return "REAL";
    case SQL_DATE:
    case SQL_TIMESTAMP:
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
      return "DATETIME TEXT";
    default:
      return "TEXT";
  }
}

}  // namespace

std::optional<size_t> OdbcTable::WholeKey() const {
  if (key.size() != 1) return std::nullopt;
  for (size_t index = 0; index < schema.columns.size(); ++index) {
    if (base::EqualsIgnoringCase(schema.columns[index].name, key.front()))
      return whole[index] ? std::optional(index) : std::nullopt;
  }
  return std::nullopt;
}

std::vector<OdbcCatalog::Row> OdbcCatalog::Rows(OdbcSession& session, const OdbcSession::Starter& start) {
  OdbcTextRows taker;
  session.StreamFrom(start, taker);
  return std::move(taker.rows);
}

const OdbcTable* OdbcCatalog::Find(OdbcSession& session, std::string_view name) {
  // The same words whether there is such a table or not.
  if (!MayRead(name)) {
    throw platform::Error(
        "Execute", "不允许读取表“" + std::string(name) + "”，它不是库存账的表，连接字符串的 Tables 也没有列出它");
  }
  if (tables_.empty()) ReadTables(session);
  const auto found = tables_.find(base::AsciiLower(name));
  if (found == tables_.end()) return nullptr;
  if (found->second.schema.columns.empty()) {
    // A table with some of its columns would look as if that were all.
    OdbcTable table = found->second;
    if (session.info().engine == OdbcEngine::kSqlite) {
      ReadSqliteTable(session, table);
    } else {
      ReadColumns(session, table);
      ReadKey(session, table);
    }
    table.schema.plain = !table.is_view;
    table.schema.row_keys = table.key;
    found->second = std::move(table);
  }
  return &found->second;
}

void OdbcCatalog::ReadTables(OdbcSession& session) {
  constexpr size_t kName = 2;
  constexpr size_t kType = 3;
  const auto rows = Rows(
      session, [schema = session.info().schema](const OdbcStatement& statement) { return statement.Tables(schema); });
  std::map<std::string, OdbcTable, std::less<>> tables;
  for (const Row& row : rows) {
    if (row.size() <= kType) continue;
    const std::string type = base::AsciiLower(row[kType]);
    if (type.find("system") != std::string::npos) continue;
    OdbcTable table;
    table.schema.name = row[kName];
    table.is_view = type.find("view") != std::string::npos;
    tables.emplace(base::AsciiLower(row[kName]), std::move(table));
  }
  tables_ = std::move(tables);
}

// SQLite tells the types as they were declared, which its driver shortens.
void OdbcCatalog::ReadSqliteTable(OdbcSession& session, OdbcTable& table) {
  constexpr size_t kName = 1;
  constexpr size_t kType = 2;
  constexpr size_t kKey = 5;
  constexpr size_t kHidden = 6;
  const std::string sql = "PRAGMA table_xinfo(" + QuotedName(table.schema.name) + ")";
  const auto rows = Rows(session, [sql](const OdbcStatement& statement) { return statement.Execute(sql); });
  std::map<std::string, std::string> key;
  for (const Row& row : rows) {
    if (row.size() <= kHidden || row[kHidden] == "1") continue;
    const bool whole = base::EqualsIgnoringCase(row[kType], "INTEGER") || base::EqualsIgnoringCase(row[kType], "INT");
    AddColumn(table, row[kName], IsPlainType(row[kType]) ? row[kType] : "TEXT", whole);
    if (row[kKey] != "0") key[row[kKey]] = row[kName];
  }
  for (const auto& [place, name] : key) table.key.push_back(name);
}

void OdbcCatalog::AddColumn(OdbcTable& table, const std::string& name, const std::string& declared, bool whole) {
  table.schema.columns.push_back({name, ClassOfDeclaredType(declared)});
  table.declared.push_back(declared);
  table.whole.push_back(whole);
}

void OdbcCatalog::ReadColumns(OdbcSession& session, OdbcTable& table) {
  constexpr size_t kTable = 2;
  constexpr size_t kName = 3;
  constexpr size_t kType = 4;
  constexpr size_t kTypeName = 5;
  const auto rows = Rows(session, [schema = session.info().schema, name = table.schema.name](
                                      const OdbcStatement& statement) { return statement.Columns(schema, name); });
  for (const Row& row : rows) {
    // The driver takes the name for a pattern, in which an underscore stands for anything.
    if (row.size() <= kTypeName || row[kTable] != table.schema.name) continue;
    const int64_t type = base::ParseInteger(row[kType]).value_or(SQL_WVARCHAR);
    AddColumn(table, row[kName], DeclaredType(type, row[kTypeName]), IsWholeType(type));
  }
}

void OdbcCatalog::ReadKey(OdbcSession& session, OdbcTable& table) {
  constexpr size_t kName = 3;
  if (table.is_view) return;
  try {
    const auto rows =
        Rows(session, [schema = session.info().schema, name = table.schema.name](const OdbcStatement& statement) {
          return statement.PrimaryKeys(schema, name);
        });
    for (const Row& row : rows) {
      if (row.size() > kName) table.key.push_back(row[kName]);
    }
  } catch (const platform::Error& error) {
    // Some drivers know nothing of keys; then rows come as the driver gives them.
    if (error.IsOfEngine()) throw;
  }
}

}  // namespace stockbook::databases
