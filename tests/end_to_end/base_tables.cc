// SPDX-License-Identifier: MIT
#include "end_to_end/base_tables.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cmath>
#include <regex>
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

ColumnClass ClassOf(const std::string& declared) {
  if (declared.find("MONEY") != std::string::npos) return ColumnClass::kMoney;
  return declared.find("DATE") != std::string::npos ? ColumnClass::kDate : ColumnClass::kPlain;
}

// The only malformed bytes in these tests are NUL and FF.
std::string Mended(const std::string& text) {
  std::string mended;
  for (const char c : text) mended += c == '\0' || c == '\xFF' ? std::string("\xEF\xBF\xBD") : std::string(1, c);
  return mended;
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
  const Amount amount = MoneyAmount();
  const bool spelled = kind == Kind::kReal ? std::isfinite(real) : AmountOf(Plain()).has_value();
  return spelled && FitsMoney(amount) ? AmountText(amount) : Plain();
}

std::string Stored::Date() const { return kind == Kind::kText ? DateText(text) : std::string(); }

std::string Stored::Raw() const {
  if (IsNull()) return {};
  return cls == ColumnClass::kMoney ? Money() : cls == ColumnClass::kDate ? Date() : Plain();
}

std::string Stored::Cell() const { return Mended(Raw()); }

std::string Stored::Order() const {
  if (IsNull()) return {};
  if (cls == ColumnClass::kDate) return Date();
  if (kind == Kind::kText || kind == Kind::kBlob) return (kind == Kind::kText ? "2" : "3") + text;
  char number[400];
  std::snprintf(number, sizeof number, "1%030.6f", Number());  // of the few numbers that these tests sort by
  return number;
}

std::string Stored::Identity() const {
  if (IsNull()) return "null";
  if (cls == ColumnClass::kDate) return Date().empty() ? "null" : "date " + Date();
  const bool number = kind == Kind::kInteger || kind == Kind::kReal;
  if (cls == ColumnClass::kMoney && AmountOf(number ? Exactly(Number()) : Plain())) return "amount " + Money();
  return (number                ? "number "
          : kind == Kind::kText ? "text "
                                : "blob ") +
         (kind == Kind::kReal ? Exactly(real) : Plain());
}

bool Stored::IsNumber() const {
  if (kind == Kind::kReal) return std::isfinite(real);
  return kind == Kind::kInteger || (!IsNull() && NumberOf(Plain()).has_value());
}

double Stored::Number() const {
  if (kind == Kind::kReal) return real;
  if (kind == Kind::kInteger) return static_cast<double>(integer);
  return NumberOf(Plain()).value_or(0);
}

Amount Stored::MoneyAmount() const {
  if (kind == Kind::kReal) return std::isfinite(real) ? AmountOf(Exactly(real)).value_or(0) : kBeyondMoney;
  return AmountOf(Plain()).value_or(0);
}

Stored Negative(const Stored& value) {
  Stored negative;
  negative.cls = value.cls;
  if (value.cls == ColumnClass::kMoney) {
    const bool amount = FitsMoney(value.MoneyAmount()) && AmountOf(value.Cell()).has_value();
    if (!amount && !(value.kind == Stored::Kind::kReal && !std::isfinite(value.real))) return negative;
    negative.kind = Stored::Kind::kText;
    negative.text = amount ? AmountText(-value.MoneyAmount()) : "1e30";
    return negative;
  }
  if (value.kind == Stored::Kind::kInteger) {
    negative.kind = value.kind;
    negative.integer = value.integer == INT64_MIN ? value.integer : -value.integer;  // no journal has it
  } else if (value.kind == Stored::Kind::kReal || NumberOf(value.text)) {
    negative.kind = Stored::Kind::kReal;
    negative.real = -value.Number();
  }
  return negative;
}

BaseTable::BaseTable(sqlite3* database, const std::string& name, const std::string& condition) {
  std::vector<ColumnClass> classes;
  ForEachRow(database, "PRAGMA table_info(\"" + name + "\")", [&](sqlite3_stmt* statement) {
    const auto text = [&](int column) {
      return std::string(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)));
    };
    columns_[text(1)] = classes.size();
    classes.push_back(ClassOf(text(2)));
    of_numbers_.push_back(text(2).find("INT") != std::string::npos || text(2) == "REAL");
  });
  const std::string where = condition.empty() ? "" : " WHERE " + condition;
  ForEachRow(database, "SELECT rowid, * FROM \"" + name + "\"" + where, [&](sqlite3_stmt* statement) {
    places_[sqlite3_column_int64(statement, 0)] = rows_.size();
    std::vector<Stored> row;
    for (size_t column = 0; column < classes.size(); ++column) {
      row.push_back(ReadStored(statement, static_cast<int>(column) + 1));
      row.back().cls = classes[column];
    }
    rows_.push_back(std::move(row));
  });
}

size_t BaseTable::Column(std::string_view name) const {
  const auto found = columns_.find(name);
  if (found == columns_.end()) throw std::out_of_range("the table has no column " + std::string(name));
  return found->second;
}

size_t BaseTable::RowOf(int64_t number) const { return places_.at(number); }

void BaseTables::Closer::operator()(sqlite3* database) const { sqlite3_close(database); }

BaseTables::BaseTables(const std::string& path, const std::map<std::string, std::string>& conditions) {
  sqlite3* database = nullptr;
  EXPECT_EQ(sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK) << path;
  database_.reset(database);
  std::vector<std::string> names;
  ForEachRow(database, "SELECT name FROM sqlite_master WHERE type = 'table'", [&](sqlite3_stmt* statement) {
    names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
  });
  for (const std::string& name : names) {
    const auto condition = conditions.find(name);
    tables_.emplace(name, BaseTable(database, name, condition == conditions.end() ? "" : condition->second));
  }
}

const BaseTable& BaseTables::operator[](std::string_view name) const {
  const auto found = tables_.find(name);
  if (found == tables_.end()) throw std::out_of_range("the inventory has no table " + std::string(name));
  return found->second;
}

std::vector<std::vector<Stored>> BaseTables::Query(const std::string& sql) const {
  std::vector<std::vector<Stored>> rows;
  ForEachRow(database_.get(), sql, [&](sqlite3_stmt* statement) {
    std::vector<Stored>& row = rows.emplace_back();
    for (int column = 0; column < sqlite3_column_count(statement); ++column)
      row.push_back(ReadStored(statement, column));
  });
  return rows;
}

std::optional<std::string> BaseTables::FirstText(const std::string& sql) const {
  const auto rows = Query(sql);
  return rows.empty() ? std::nullopt : std::optional(rows[0][0].Cell());
}

std::optional<std::string> BaseTables::KeyList(const std::string& sql) const {
  static const std::regex whole("[+-]?[0-9]+");
  const auto rows = Query(sql);
  std::string list;
  for (const auto& row : rows) {
    const std::string key = row[0].Cell();
    if (std::regex_match(key, whole)) list += (list.empty() ? "" : ",") + key;
  }
  if (rows.empty()) return std::nullopt;
  return list.empty() ? "NULL" : list;
}

}  // namespace stockbook::end_to_end
