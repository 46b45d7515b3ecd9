// SPDX-License-Identifier: MIT
#include "databases/sqlite/catalog.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "databases/dialect/typed_sql.h"
#include "databases/sqlite/error_codes.h"

namespace stockbook::databases {

void Catalog::Refresh() {
  const Database::OwnWork own(database_);
  Statement statement(database_, "PRAGMA schema_version");
  const int64_t version = statement.Step() ? statement.Integer(0) : 0;
  if (version == version_) return;
  // Should reading fail half way, the next statement reads again.
  version_ = kUnread;
  tables_.clear();
  ReadTables();
  version_ = version;
}

void Catalog::ReadTables() {
  Statement encoding(database_, "PRAGMA encoding");
  utf8_ = encoding.Step() && encoding.Text(0) == "UTF-8";
  Statement statement(database_, "PRAGMA main.table_list");
  constexpr int kName = 1;
  constexpr int kType = 2;
  constexpr int kWithoutRowNumbers = 4;
  while (statement.Step()) {
    const std::string_view type = statement.Text(kType);
    if (statement.Text(0) != "main" || statement.Text(kName).starts_with("sqlite_")) continue;
    Entry entry;
    entry.is_table = type == "table";
    entry.has_row_numbers = entry.is_table && statement.Integer(kWithoutRowNumbers) == 0;
    if (!entry.is_table && type != "view" && type != "virtual") continue;
    entry.schema = std::make_unique<TableSchema>();
    entry.schema->name = statement.Text(kName);
    tables_.emplace(base::AsciiLower(entry.schema->name), std::move(entry));
  }
}

const TableSchema* Catalog::FindTable(std::string_view name) {
  // The same words whether there is such a table or not.
  if (!database_.tables().Contains(name)) {
    throw platform::Error(
        "Execute", "不允许读取表“" + std::string(name) + "”，它不是库存账的表，连接字符串的 Tables 也没有列出它");
  }
  const auto found = tables_.find(base::AsciiLower(name));
  if (found == tables_.end()) return nullptr;
  if (found->second.schema->columns.empty()) ReadColumns(found->second);
  return found->second.schema.get();
}

void Catalog::ReadColumns(Entry& entry) const {
  const Database::OwnWork own(database_);
  constexpr int64_t kHidden = 1;
  // A table with some of its columns would look as if that were all.
  TableSchema table;
  table.name = entry.schema->name;
  Statement statement(database_, "PRAGMA main.table_xinfo(" + QuotedName(table.name) + ")");
  constexpr int kName = 1;
  constexpr int kType = 2;
  constexpr int kHiddenMark = 6;
  while (statement.Step()) {
    if (statement.Integer(kHiddenMark) == kHidden) continue;
    table.columns.push_back({std::string(statement.Text(kName)), ClassOfDeclaredType(statement.Text(kType))});
  }
  const auto has_column = [&](std::string_view name) {
    return std::any_of(table.columns.begin(), table.columns.end(),
                       [&](const TableColumn& column) { return base::EqualsIgnoringCase(column.name, name); });
  };
  for (const char* name : {"_rowid_", "rowid", "oid"}) {
    if (entry.has_row_numbers && table.row_number.empty() && !has_column(name)) table.row_number = name;
  }
  table.plain = utf8_ && entry.is_table && ComparesByBytes(table);
  *entry.schema = std::move(table);
}

bool Catalog::ComparesByBytes(const TableSchema& table) const {
  return std::all_of(table.columns.begin(), table.columns.end(), [&](const TableColumn& column) {
    const char* collation = nullptr;
    const int code = sqlite3_table_column_metadata(database_.handle(), "main", table.name.c_str(), column.name.c_str(),
                                                   nullptr, &collation, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK && KindOfCode(code) != platform::ErrorKind::kStatement) throw database_.ErrorOf("Execute");
    return code == SQLITE_OK && collation != nullptr && base::EqualsIgnoringCase(collation, "BINARY");
  });
}

}  // namespace stockbook::databases
