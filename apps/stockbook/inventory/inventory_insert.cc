// SPDX-License-Identifier: MIT
#include "stockbook/inventory/inventory_insert.h"

#include <stdexcept>
#include <utility>

#include "platform/error.h"

namespace stockbook::app {

InsertCursor::InsertCursor(sqlite3* database, const InventoryTable& table, const std::string& file)
    : database_(database), table_(table), file_(file), copies_(table.columns.size()) {
  const std::string sql = InsertStatement(table);
  Check(sqlite3_prepare_v3(database_, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT, &statement_,
                           nullptr));
}

InsertCursor::~InsertCursor() { sqlite3_finalize(statement_); }

void InsertCursor::Expect(size_t count) const {
  if (count != table_.columns.size())
    throw std::logic_error("A row of " + std::string(table_.name) + " has another number of values.");
}

void InsertCursor::Bind(int index, int64_t number) { Check(sqlite3_bind_int64(statement_, index, number)); }

void InsertCursor::Bind(int index, double number) { Check(sqlite3_bind_double(statement_, index, number)); }

void InsertCursor::Bind(int index, base::Money money) { BindCopy(index, money.Text()); }

void InsertCursor::Bind(int index, base::Date date) { BindCopy(index, date.IsZero() ? std::string() : date.Text()); }

void InsertCursor::Bind(int index, std::string_view text) {
  Check(text.empty() ? sqlite3_bind_null(statement_, index)
                     : sqlite3_bind_text64(statement_, index, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8));
}

void InsertCursor::BindCopy(int index, std::string text) {
  std::string& kept = copies_[static_cast<size_t>(index - 1)];
  kept = std::move(text);
  Bind(index, std::string_view(kept));
}

void InsertCursor::Check(int code) const {
  if (code == SQLITE_OK) return;
  throw platform::Error(
      "write an inventory",
      "Cannot write '" + file_ + "', table " + std::string(table_.name) + ": " + sqlite3_errmsg(database_) + ".", code);
}

void InsertCursor::Step() {
  const int code = sqlite3_step(statement_);
  Check(code == SQLITE_DONE ? SQLITE_OK : code);
  Check(sqlite3_reset(statement_));
}

}  // namespace stockbook::app
