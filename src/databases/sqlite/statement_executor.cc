// SPDX-License-Identifier: MIT
#include "databases/sqlite/statement_executor.h"

#include "databases/sqlite/row_values.h"

namespace stockbook::databases {

std::vector<platform::Field> ExecuteStatement(const Database& database, const TranslatedQuery& query) {
  Statement statement(database, query.sql);
  std::vector<ColumnSink> sinks(query.columns.size());
  while (statement.Step()) {
    for (size_t index = 0; index < sinks.size(); ++index) {
      sinks[index].Append(statement.handle(), static_cast<int>(index), ResultFormOf(query.columns[index].cls), ColumnSink::Sign::kKept);
    }
  }
  std::vector<platform::Field> fields;
  for (size_t index = 0; index < sinks.size(); ++index) fields.push_back({query.columns[index].name, sinks[index].Finish()});
  return fields;
}

}  // namespace stockbook::databases
