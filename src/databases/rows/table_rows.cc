// SPDX-License-Identifier: MIT
#include "databases/rows/table_rows.h"

#include <algorithm>

#include "base/text.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

bool ReadsAll(const StatementNeeds& needs, std::string_view table) {
  return std::any_of(needs.tables().begin(), needs.tables().end(), [&](const TableNeeds& of_table) {
    return of_table.all_columns && base::EqualsIgnoringCase(of_table.name, table);
  });
}

}  // namespace

TableRows::TableRows(const MemoryDatabase& memory, const InventoryTable& table, const StatementNeeds& needs,
                     Interruption& interruption)
    : memory_(memory), table_(table), interruption_(interruption), copies_(table.columns.size()) {
  const bool all = ReadsAll(needs, table.name);
  for (const InventoryColumn& column : table.columns)
    needed_.push_back(all || column.type == kKeyColumn || needs.NamesColumn(std::string(column.name)));
  memory.Run(CreateStatement(table));
  const std::string sql = InsertStatement(table);
  sqlite3_stmt* prepared = nullptr;
  memory.Check(sqlite3_prepare_v2(memory.handle(), sql.c_str(), -1, &prepared, nullptr));
  insertion_.reset(prepared);
}

void TableRows::AddColumns(std::span<const platform::Field> fields) {
  std::vector<const columns::Column*> sources;
  size_t rows = 0;
  for (const InventoryColumn& column : table_.columns) {
    const auto field = std::find_if(fields.begin(), fields.end(), [&](const platform::Field& candidate) {
      return base::EqualsIgnoringCase(candidate.name, column.name);
    });
    sources.push_back(field == fields.end() ? nullptr : &field->column);
    if (field == fields.end() && column.type == kKeyColumn) {
      throw platform::Error("read rows", "表“" + std::string(table_.name) + "”缺少键字段 " + std::string(column.name) +
                                             "：请在 RowSource::Columns 中给出它。");
    }
    if (field != fields.end()) rows = std::max(rows, field->column.size());
  }
  for (size_t row = 0; row < rows; ++row) {
    for (size_t column = 0; column < sources.size(); ++column) {
      if (needed_[column] && sources[column] != nullptr) BindValue(column, sources[column]->At(row));
    }
    Step();
  }
}

void TableRows::Bind(size_t column, int64_t number) {
  if (needed_[column]) memory_.Check(sqlite3_bind_int64(insertion_.get(), static_cast<int>(column) + 1, number));
}

void TableRows::Bind(size_t column, double number) {
  if (needed_[column]) memory_.Check(sqlite3_bind_double(insertion_.get(), static_cast<int>(column) + 1, number));
}

void TableRows::BindNull(size_t column) {
  memory_.Check(sqlite3_bind_null(insertion_.get(), static_cast<int>(column) + 1));
}

// An empty text is null, as nothing is.
void TableRows::BindText(size_t column, const std::string& text) {
  if (text.empty()) {
    BindNull(column);
  } else {
    BindStored(column, text);
  }
}

void TableRows::BindStored(size_t column, const std::string& text) {
  if (!needed_[column]) return;
  memory_.Check(sqlite3_bind_text64(insertion_.get(), static_cast<int>(column) + 1, text.data(), text.size(),
                                    SQLITE_STATIC, SQLITE_UTF8));
}

void TableRows::BindValue(size_t column, const base::Value& value) {
  if (const auto* number = value.As<int64_t>()) {
    Bind(column, *number);
  } else if (const auto* real = value.As<double>()) {
    Bind(column, *real);
  } else if (value.IsNull()) {
    BindNull(column);
  } else {
    BindStored(column, copies_[column] = value.Text());
  }
}

void TableRows::Step() {
  if (interruption_.IsDueAfter(1)) throw interruption_.Reason("Execute");
  const int code = sqlite3_step(insertion_.get());
  if (code == SQLITE_CONSTRAINT) {
    throw platform::Error("read rows", "表“" + std::string(table_.name) + "”中有两行的键 " + std::string(table_.keys) +
                                           " 相同：每一行须有自己的编号，请更正后再读入。");
  }
  memory_.Check(code);
  memory_.Check(sqlite3_reset(insertion_.get()));
  interruption_.CountRows(1);
}

}  // namespace stockbook::databases
