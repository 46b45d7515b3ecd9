// SPDX-License-Identifier: MIT
#include "end_to_end/base_tables.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <stdexcept>

namespace stockbook::end_to_end {
namespace {

Stored ReadStored(sqlite3_stmt* statement, int column) {
  Stored stored;
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
      stored.kind = Stored::Kind::kInteger;
      stored.integer = sqlite3_column_int64(statement, column);
      break;
    case SQLITE_FLOAT:
      stored.kind = Stored::Kind::kReal;
      stored.real = sqlite3_column_double(statement, column);
      break;
    case SQLITE_NULL:
      break;
    default: {
      stored.kind = sqlite3_column_type(statement, column) == SQLITE_TEXT ? Stored::Kind::kText : Stored::Kind::kBlob;
      const void* bytes = sqlite3_column_blob(statement, column);
      const auto size = static_cast<size_t>(sqlite3_column_bytes(statement, column));
      if (size > 0) stored.text.assign(static_cast<const char*>(bytes), size);
    }
  }
  return stored;
}

template <typename Row>
void ForEachRow(sqlite3* database, const std::string& sql, Row row) {
  sqlite3_stmt* statement = nullptr;
  ASSERT_EQ(sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr), SQLITE_OK)
      << sql << ": " << sqlite3_errmsg(database);
  while (sqlite3_step(statement) == SQLITE_ROW) row(statement);
  sqlite3_finalize(statement);
}

std::string Exactly(double number) {
  char text[40];
  for (int digits = 15; digits <= 17; ++digits) {
    std::snprintf(text, sizeof text, "%.*e", digits - 1, number);
    if (std::strtod(text, nullptr) == number) break;
  }
  return text;
}

}  // namespace

std::string Stored::Plain() const {
  switch (kind) {
    case Kind::kNull:
      return {};
    case Kind::kInteger:
      return std::to_string(integer);
    case Kind::kReal:
      return NumberText(real);
    case Kind::kText:
    case Kind::kBlob:
      return text;
  }
  return {};
}

std::string Stored::Money() const {
  if (IsNull()) return {};
  const auto amount = kind == Kind::kReal ? AmountOf(Exactly(real)) : AmountOf(Plain());
  return amount ? AmountText(*amount) : Plain();
}

std::string Stored::Date() const { return kind == Kind::kText ? DateText(text) : std::string(); }

double Stored::Number() const {
  if (kind == Kind::kReal) return real;
  return NumberOf(Plain()).value_or(0);
}

Amount Stored::MoneyAmount() const { return AmountOf(Money()).value_or(0); }

BaseTable::BaseTable(sqlite3* database, const std::string& name, const std::string& condition) {
  const std::string where = condition.empty() ? "" : " WHERE " + condition;
  ForEachRow(database, "SELECT * FROM \"" + name + "\"" + where, [&](sqlite3_stmt* statement) {
    const int count = sqlite3_column_count(statement);
    if (columns_.empty()) {
      for (int column = 0; column < count; ++column)
        columns_[sqlite3_column_name(statement, column)] = static_cast<size_t>(column);
    }
    std::vector<Stored> row;
    for (int column = 0; column < count; ++column) row.push_back(ReadStored(statement, column));
    rows_.push_back(std::move(row));
  });
}

size_t BaseTable::Column(std::string_view name) const {
  const auto found = columns_.find(name);
  if (found == columns_.end()) throw std::out_of_range("the table has no column " + std::string(name));
  return found->second;
}

std::vector<size_t> BaseTable::Where(std::string_view name, int64_t key) const {
  if (rows_.empty()) return {};
  auto found = indexes_.find(name);
  if (found == indexes_.end()) {
    found = indexes_.emplace(std::string(name), Index()).first;
    const size_t column = Column(name);
    for (size_t row = 0; row < rows_.size(); ++row) {
      if (At(row, column).kind == Stored::Kind::kInteger) found->second.emplace(At(row, column).integer, row);
    }
  }
  std::vector<size_t> rows;
  const auto [first, last] = found->second.equal_range(key);
  for (auto at = first; at != last; ++at) rows.push_back(at->second);
  return rows;
}

BaseTables::BaseTables(const std::string& path, const std::map<std::string, std::string>& conditions) {
  sqlite3* database = nullptr;
  EXPECT_EQ(sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK) << path;
  std::vector<std::string> names;
  ForEachRow(database, "SELECT name FROM sqlite_master WHERE type = 'table'", [&](sqlite3_stmt* statement) {
    names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
  });
  for (const std::string& name : names) {
    const auto condition = conditions.find(name);
    tables_.emplace(name, BaseTable(database, name, condition == conditions.end() ? "" : condition->second));
  }
  sqlite3_close(database);
}

const BaseTable& BaseTables::operator[](std::string_view name) const {
  const auto found = tables_.find(name);
  if (found == tables_.end()) throw std::out_of_range("the inventory has no table " + std::string(name));
  return found->second;
}

}  // namespace stockbook::end_to_end
