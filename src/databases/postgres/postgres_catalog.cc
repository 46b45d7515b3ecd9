// SPDX-License-Identifier: MIT
#include "databases/postgres/postgres_catalog.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "base/text.h"
#include "databases/dialect/typed_sql.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

// Tables, partitioned and foreign ones, views and materialized views, column by column. A domain counts as what it is
// made of.
constexpr const char* kColumns =
    "SELECT c.relname, a.attname,"
    " pg_catalog.format_type(CASE WHEN t.typtype = 'd' THEN t.typbasetype ELSE a.atttypid END, NULL), c.relkind,"
    " pg_catalog.array_position(CAST(i.indkey AS pg_catalog.int2[]), a.attnum)"
    " FROM pg_catalog.pg_class AS c"
    " JOIN pg_catalog.pg_namespace AS n ON n.oid = c.relnamespace"
    " JOIN pg_catalog.pg_attribute AS a ON a.attrelid = c.oid"
    " JOIN pg_catalog.pg_type AS t ON t.oid = a.atttypid"
    " LEFT JOIN pg_catalog.pg_index AS i ON i.indrelid = c.oid AND i.indisprimary"
    " WHERE c.relkind IN ('r', 'p', 'f', 'v', 'm') AND a.attnum > 0 AND NOT a.attisdropped"
    " AND n.nspname NOT IN ('pg_catalog', 'information_schema') AND pg_catalog.pg_table_is_visible(c.oid)";
constexpr const char* kOrder = " ORDER BY c.relname, a.attnum";
enum Cell : int { kTable, kColumn, kType, kKind, kKeyPlace };
// ASCII letters alone, whatever the database's language is.
constexpr const char* kLowerName =
    "pg_catalog.translate(c.relname, 'ABCDEFGHIJKLMNOPQRSTUVWXYZ', 'abcdefghijklmnopqrstuvwxyz')";

// A database may have thousands of tables that are nobody's business here.
std::string ColumnsQuery(const ReadableTables& readable) {
  std::string query = kColumns;
  if (const auto* names = readable.Names()) {
    std::string list;
    for (const std::string& name : *names) list += (list.empty() ? "" : ", ") + QuotedText(name);
    query += std::string(" AND ") + kLowerName + " IN (" + list + ")";
  }
  return query + kOrder;
}

// Types whose names only look like those of numbers, dates or texts.
constexpr std::array<std::string_view, 4> kMisleading = {"interval", "point", "range", "[]"};

std::string_view CellOf(const PostgresResult& rows, int row, int column) {
  return {PQgetvalue(rows.get(), row, column), static_cast<size_t>(PQgetlength(rows.get(), row, column))};
}

}  // namespace

ValueClass ClassOfPostgresType(std::string_view type) {
  const bool misleading = std::any_of(kMisleading.begin(), kMisleading.end(),
                                      [&](std::string_view part) { return type.find(part) != std::string_view::npos; });
  return misleading ? ValueClass::kAny : ClassOfDeclaredType(type);
}

void PostgresCatalog::Refresh() {
  if (moment_ == session_.moment()) return;
  // Should reading fail half way, the next statement reads again.
  moment_.reset();
  tables_.clear();
  tables_by_lower_case_.clear();
  ReadTables();
  moment_ = session_.moment();
}

void PostgresCatalog::ReadTables() {
  const PostgresResult rows = session_.Ask(ColumnsQuery(session_.settings().tables));
  std::map<int, std::string> keys;  // of the table under way, by their places
  for (int row = 0; row < PQntuples(rows.get()); ++row) {
    const std::string name(CellOf(rows, row, kTable));
    if (!session_.settings().tables.Contains(name)) continue;
    auto& table = tables_[name];
    if (!table) {
      table = std::make_unique<TableSchema>();
      table->name = name;
      // Only a stored table can be told row from row; a foreign one has its keys elsewhere.
      const std::string_view kind = CellOf(rows, row, kKind);
      table->plain = kind == "r" || kind == "p";
      tables_by_lower_case_.emplace(base::AsciiLower(name), table.get());
      keys.clear();
    }
    const std::string column(CellOf(rows, row, kColumn));
    table->columns.push_back({column, ClassOfPostgresType(CellOf(rows, row, kType))});
    if (PQgetisnull(rows.get(), row, kKeyPlace) != 0) continue;
    keys.emplace(std::atoi(PQgetvalue(rows.get(), row, kKeyPlace)), column);
    table->row_keys.clear();
    for (const auto& [place, key] : keys) table->row_keys.push_back(key);
  }
}

const TableSchema* PostgresCatalog::FindTable(std::string_view name) const {
  if (!session_.settings().tables.Contains(name)) {
    throw platform::Error(
        "Execute", "不允许读取表“" + std::string(name) + "”，它不是库存账的表，连接字符串的 Tables 也没有列出它");
  }
  if (const auto exact = tables_.find(name); exact != tables_.end()) return exact->second.get();
  const auto found = tables_by_lower_case_.find(base::AsciiLower(name));
  return found == tables_by_lower_case_.end() ? nullptr : found->second;
}

}  // namespace stockbook::databases
