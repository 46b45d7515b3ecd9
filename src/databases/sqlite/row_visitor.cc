// SPDX-License-Identifier: MIT
#include "databases/sqlite/row_visitor.h"

#include <exception>

namespace stockbook::databases {
namespace {

constexpr const char* kVisitType = "stockbook visit";

constexpr size_t kRowsToCount = 512;

struct RowVisit {
  RowVisitor& visitor;
  const Interruption& interruption;
  std::exception_ptr failure;
  size_t rows = 0;

  void Count() {
    if (++rows % kRowsToCount == 0) interruption.CountRows(kRowsToCount);
  }
};

// No exception may pass through SQLite. The first argument is the visit, which no text of a statement can spell.
void VisitRow(sqlite3_context* context, int count, sqlite3_value** values) {
  auto* visit = count > 0 ? static_cast<RowVisit*>(sqlite3_value_pointer(values[0], kVisitType)) : nullptr;
  if (visit == nullptr) {
    sqlite3_result_error(context, "wrong arguments of sb_visit", -1);
    return;
  }
  if (visit->failure) return;
  try {
    visit->visitor.Visit({values + 1, static_cast<size_t>(count - 1)});
    visit->Count();
  } catch (...) {
    visit->failure = std::current_exception();
    sqlite3_result_error_code(context, SQLITE_ABORT);
  }
}

void EndVisits(sqlite3_context* context) { sqlite3_result_null(context); }

std::string ListOf(const std::vector<std::string>& columns) {
  std::string list;
  for (const std::string& column : columns) list += (list.empty() ? "" : ", ") + column;
  return list;
}

void BindNumbers(Statement& statement, std::span<const int64_t> numbers) {
  int index = 2;
  for (const int64_t number : numbers) statement.Bind(index++, number);
}

// A function takes only so many arguments.
void StepRows(const Database& database, const RowQuery& query, RowVisitor& visitor, std::span<const int64_t> numbers) {
  Statement statement(database, TextOf(query));
  BindNumbers(statement, numbers);
  std::vector<sqlite3_value*> values(query.columns.size());
  while (statement.Step()) {
    for (size_t index = 0; index < values.size(); ++index)
      values[index] = sqlite3_column_value(statement.handle(), static_cast<int>(index));
    visitor.Visit(values);
  }
}

}  // namespace

std::string TextOf(const RowQuery& query) { return "SELECT " + ListOf(query.columns) + query.rest; }

void RegisterRowVisits(const Database& database) {
  if (sqlite3_create_function_v2(database.handle(), "sb_visit", -1, SQLITE_UTF8 | SQLITE_DIRECTONLY, nullptr, nullptr,
                                 VisitRow, EndVisits, nullptr) != SQLITE_OK) {
    throw database.ErrorOf("Open");
  }
}

void VisitRows(const Database& database, const RowQuery& query, RowVisitor& visitor, std::span<const int64_t> numbers) {
  const int most = sqlite3_limit(database.handle(), SQLITE_LIMIT_FUNCTION_ARG, -1);
  if (query.columns.size() >= static_cast<size_t>(most)) return StepRows(database, query, visitor, numbers);
  RowVisit visit{visitor, database.interruption(), nullptr};
  Statement statement(database, "SELECT sb_visit(?1, " + ListOf(query.columns) + ")" + query.rest);
  sqlite3_bind_pointer(statement.handle(), 1, &visit, kVisitType, nullptr);
  BindNumbers(statement, numbers);
  try {
    while (statement.Step()) {
    }
  } catch (const platform::Error&) {
    if (visit.failure) std::rethrow_exception(visit.failure);
    throw;
  }
}

}  // namespace stockbook::databases
