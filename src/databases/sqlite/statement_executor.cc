// SPDX-License-Identifier: MIT
#include "databases/sqlite/statement_executor.h"

#include "databases/sqlite/value_feed.h"

namespace stockbook::databases {

std::vector<platform::Field> ExecuteStatement(const Database& database, const TranslatedQuery& query) {
  Statement statement(database, query.sql);
  std::vector<ColumnSink> sinks(query.columns.size());
  std::vector<ValueFeed> feeds;
  for (size_t index = 0; index < sinks.size(); ++index) {
    feeds.emplace_back(ResultFormOf(query.columns[index].cls)).AddTarget(sinks[index], ValueFeed::Sign::kKept);
  }
  StepInto(statement, feeds);
  std::vector<platform::Field> fields;
  for (size_t index = 0; index < sinks.size(); ++index)
    fields.push_back({query.columns[index].name, sinks[index].builder.Finish()});
  return fields;
}

}  // namespace stockbook::databases
