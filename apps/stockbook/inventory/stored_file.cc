// SPDX-License-Identifier: MIT
#include "stockbook/inventory/stored_file.h"

#include <sqlite3.h>

#include <algorithm>

#include "base/text.h"
#include "stockbook/base/date.h"
#include "stockbook/inventory/inventory_rules.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

// The first columns of whole indexes, and the keys that are row numbers.
constexpr const char* kIndexedColumns =
    "SELECT m.name, i.name FROM sqlite_master AS m, pragma_index_list(m.name) AS l, pragma_index_info(l.name) AS i "
    "WHERE m.type = 'table' AND l.partial = 0 AND i.seqno = 0 AND i.name IS NOT NULL "
    "UNION ALL SELECT m.name, p.name FROM sqlite_master AS m, pragma_table_info(m.name) AS p "
    "WHERE m.type = 'table' AND p.pk = 1 AND upper(p.type) = 'INTEGER'";
constexpr const char* kTableColumns =
    "SELECT m.name, p.name FROM sqlite_master AS m, pragma_table_info(m.name) AS p WHERE m.type = 'table'";

constexpr int kFileBusyMs = 2000;

std::string TextAt(sqlite3_stmt* statement, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
  return text == nullptr ? std::string() : text;
}

}  // namespace

void StoredFile::CloseHandle::operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }

StoredFile::StoredFile(const std::string& file) : file_(file) {
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  handle_.reset(opened);
  if (code != SQLITE_OK)
    throw platform::Error("open", "无法打开文件“" + file + "”：" + sqlite3_errstr(code), code,
                          platform::ErrorKind::kInputOutput);
  sqlite3_busy_timeout(opened, kFileBusyMs);
  Query(kIndexedColumns, [&](const auto& table, const auto& column) { indexed_.push_back({table, column}); });
  Query(kTableColumns, [&](const auto& table, const auto& column) { columns_.push_back({table, column}); });
}

void StoredFile::Query(const std::string& sql, const TakeRow& take) const {
  sqlite3_stmt* prepared = nullptr;
  int code = sqlite3_prepare_v2(handle_.get(), sql.c_str(), -1, &prepared, nullptr);
  const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(prepared, sqlite3_finalize);
  while (code == SQLITE_OK || code == SQLITE_ROW) {
    code = sqlite3_step(prepared);
    if (code == SQLITE_ROW) take(TextAt(prepared, 0), TextAt(prepared, 1));
  }
  if (code != SQLITE_DONE)
    throw platform::Error("read", "无法读取文件“" + file_ + "”：" + sqlite3_errstr(code), code,
                          platform::ErrorKind::kInputOutput);
}

bool StoredFile::HasIndexOn(std::string_view table, std::string_view column) const {
  return std::any_of(indexed_.begin(), indexed_.end(), [&](const FirstColumn& first) {
    return base::EqualsIgnoringCase(first.table, table) && base::EqualsIgnoringCase(first.column, column);
  });
}

bool StoredFile::HasColumn(std::string_view table, std::string_view column) const {
  return std::any_of(columns_.begin(), columns_.end(), [&](const FirstColumn& found) {
    return base::EqualsIgnoringCase(found.table, table) && base::EqualsIgnoringCase(found.column, column);
  });
}

void StoredFile::ForEachUnreadableDate(TableName name, const TakeDate& take) const {
  const InventoryTable& table = InventoryTableOf(name);
  const std::string key(NumberKeyOf(name));
  for (const InventoryColumn& column : table.columns) {
    if (!column.type.starts_with("DATETIME") || !HasColumn(table.name, column.name) || !HasColumn(table.name, key))
      continue;
    const std::string date(column.name);
    Query("SELECT " + key + ", " + date + " FROM " + std::string(table.name) + " WHERE typeof(" + date +
              ") IN ('text', 'blob') AND " + date + " <> ''",
          [&](const std::string& row, const std::string& text) {
            if (!base::Date::Parse(text)) take(column.name, key + "=" + row, text);
          });
  }
}

}  // namespace stockbook::app
