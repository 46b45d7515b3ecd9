// SPDX-License-Identifier: MIT
#include "databases/plain_query.h"

#include <gtest/gtest.h>

#include "databases/sqlite/embedded_connection.h"
#include "stockbook/platform/error.h"

namespace stockbook::testing {
namespace {

using databases::Strategy;

// With the types of the values, and as they are shown.
struct Rows {
  std::vector<std::string> exact;
  std::vector<std::string> texts;
};

std::vector<std::string> TextsOf(platform::Recordset rows, const std::vector<std::string>& fields) {
  if (fields.empty()) return AllRows(std::move(rows));
  std::vector<std::string> texts;
  for (; !rows.AtEnd(); rows.MoveNext()) {
    std::string text;
    for (const std::string& field : fields) {
      const base::Value value = rows.FieldValue(field);
      text.append(text.empty() ? "" : "|").append(value.IsNull() ? "~" : value.Text());
    }
    texts.push_back(std::move(text));
  }
  return texts;
}

Rows RowsBy(Strategy strategy, const std::string& connection, const std::string& statement,
            const std::vector<std::string>& fields) {
  try {
    databases::EmbeddedConnection opened(connection, strategy);
    return {ExactRows(opened.Execute(statement)), TextsOf(opened.Execute(statement), fields)};
  } catch (const platform::Error& error) {
    return {{std::string("error: ") + error.what()}, {std::string("error: ") + error.what()}};
  }
}

}  // namespace

std::vector<std::string> PlainRows(const DatabaseFile& file, const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  EXPECT_EQ(sqlite3_prepare_v2(file.handle(), sql.c_str(), -1, &statement, nullptr), SQLITE_OK)
      << sqlite3_errmsg(file.handle()) << "\n"
      << sql;
  std::vector<std::string> rows;
  while (sqlite3_step(statement) == SQLITE_ROW) {
    std::string row;
    for (int column = 0; column < sqlite3_column_count(statement); ++column) {
      const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
      const auto size = static_cast<size_t>(sqlite3_column_bytes(statement, column));
      row.append(column == 0 ? "" : "|");
      row += bytes == nullptr ? std::string(sqlite3_column_type(statement, column) == SQLITE_NULL ? "~" : "")
                              : std::string(bytes, size);
    }
    rows.push_back(std::move(row));
  }
  EXPECT_EQ(sqlite3_finalize(statement), SQLITE_OK) << sqlite3_errmsg(file.handle());
  return rows;
}

std::vector<std::string> RowsOfEveryPlan(const std::string& connection, const std::string& statement,
                                         const std::vector<std::string>& fields) {
  const Rows whole = RowsBy(Strategy::kStatement, connection, statement, fields);
  EXPECT_EQ(RowsBy(Strategy::kFastest, connection, statement, fields).exact, whole.exact) << statement;
  EXPECT_EQ(RowsBy(Strategy::kArms, connection, statement, fields).exact, whole.exact) << statement;
  return whole.texts;
}

}  // namespace stockbook::testing
