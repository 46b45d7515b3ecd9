// SPDX-License-Identifier: MIT
#include "stockbook/copy/file_table_writer.h"

#include <sqlite3.h>

#include <memory>

#include "base/text.h"
#include "databases/connection_string.h"
#include "databases/sqlite/embedded_connection.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

using databases::StoredType;

std::string QuotedSqlName(std::string_view name) { return "\"" + base::ReplaceAll(name, "\"", "\"\"") + "\""; }

// As an inventory that was made here declares them: amounts and dates are texts, so that nothing is rounded.
std::string_view DeclaredType(StoredType type) {
  switch (type) {
    case StoredType::kWhole:
      return "INTEGER";
    case StoredType::kNumber:
      return "REAL";
    case StoredType::kMoney:
      return "MONEY TEXT";
    case StoredType::kDate:
      return "DATETIME TEXT";
    case StoredType::kText:
      break;
  }
  return "TEXT";
}

// An INSERT into one table.
class TableInsert {
 public:
  TableInsert(const InventoryFile& file, const databases::StoredTable& table) : file_(file), table_(table) {
    std::string sql = "INSERT INTO " + QuotedSqlName(table.name) + " VALUES(";
    for (size_t index = 0; index < table.columns.size(); ++index) sql += index == 0 ? "?" : ",?";
    sql += ")";
    sqlite3_stmt* prepared = nullptr;
    Check(sqlite3_prepare_v2(file.handle(), sql.data(), static_cast<int>(sql.size()), &prepared, nullptr));
    statement_.reset(prepared);
  }

  void Row(std::span<const columns::Column> columns, size_t row) {
    kept_.resize(columns.size());
    for (size_t index = 0; index < columns.size(); ++index) {
      const int parameter = static_cast<int>(index) + 1;
      if (columns[index].HasTextCodes()) {
        BindCode(parameter, columns[index], row);
      } else {
        Bind(parameter, table_.columns[index].type, columns[index].At(row), kept_[index]);
      }
    }
    const int code = sqlite3_step(statement_.get());
    Check(code == SQLITE_DONE ? SQLITE_OK : code);
    Check(sqlite3_reset(statement_.get()));
  }

 private:
  void BindCode(int index, const columns::Column& column, size_t row) {
    uint32_t code = 0;
    column.ReadTextCodes(row, {&code, 1});
    if (code == 0) {
      Check(sqlite3_bind_null(statement_.get(), index));
    } else {
      BindText(index, column.TextOfCode(code));
    }
  }
  // `kept` holds a text until the row is written.
  void Bind(int index, StoredType type, const base::Value& value, std::string& kept) {
    if (value.IsNull()) {
      Check(sqlite3_bind_null(statement_.get(), index));
    } else if (value.As<std::string>() != nullptr || type == StoredType::kDate || type == StoredType::kText) {
      kept = value.Text();
      BindText(index, kept);
    } else if (type == StoredType::kMoney) {
      kept = value.AsMoney().value_or(base::Money()).Text();
      BindText(index, kept);
    } else if (type == StoredType::kWhole) {
      Check(sqlite3_bind_int64(statement_.get(), index, value.AsInteger().value_or(0)));
    } else {
      Check(sqlite3_bind_double(statement_.get(), index, databases::StoredDouble(value)));
    }
  }
  void BindText(int index, std::string_view text) {
    // No address means null, also for a text that is empty.
    const char* bytes = text.empty() ? "" : text.data();
    Check(sqlite3_bind_text64(statement_.get(), index, bytes, text.size(), SQLITE_STATIC, SQLITE_UTF8));
  }
  void Check(int code) const {
    if (code == SQLITE_OK) return;
    throw platform::Error(
        "copy", "无法写入“" + file_.target() + "”的表“" + table_.name + "”：" + sqlite3_errmsg(file_.handle()), code);
  }

  const InventoryFile& file_;
  const databases::StoredTable& table_;
  std::vector<std::string> kept_;
  std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement_{nullptr, sqlite3_finalize};
};

}  // namespace

void FileTableWriter::Create(const databases::StoredTable& table) {
  std::string sql = "CREATE TABLE " + QuotedSqlName(table.name) + "(";
  for (const databases::StoredColumn& column : table.columns) {
    if (sql.back() != '(') sql += ", ";
    sql.append(QuotedSqlName(column.name)).append(" ").append(DeclaredType(column.type));
    if (column.name == table.key) sql += " PRIMARY KEY";
  }
  file_.Execute(sql + ")");
}

void FileTableWriter::Write(const databases::StoredTable& table, std::span<const columns::Column> columns, size_t first,
                            size_t count) {
  TableInsert insert(file_, table);
  for (size_t row = first; row < first + count; ++row) insert.Row(columns, row);
}

void FileTableWriter::Seal(std::span<const databases::StoredIndex> indexes) {
  for (const databases::StoredIndex& index : indexes) {
    std::string sql = "CREATE INDEX " + QuotedSqlName(index.name) + " ON " + QuotedSqlName(index.table) + "(";
    for (const std::string& column : index.columns)
      sql.append(sql.back() == '(' ? "" : ", ").append(QuotedSqlName(column));
    file_.Execute(sql + ")");
  }
  file_.Close();
}

std::vector<columns::Column> FileTableWriter::ReadBack(const databases::StoredTable& table) {
  databases::ConnectionString settings("Provider=Stockbook.Embedded;Timeout=0");
  settings.Set("Data Source", file_.path());
  databases::EmbeddedConnection connection(settings.Text());
  platform::Recordset rows =
      connection.Execute("Select * From " + table.name + (table.key.empty() ? "" : " Order By " + table.key));
  std::vector<columns::Column> columns;
  for (platform::Field& field : rows.TakeAll()) columns.push_back(std::move(field.column));
  return columns;
}

}  // namespace stockbook::app
