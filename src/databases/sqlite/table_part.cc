// SPDX-License-Identifier: MIT
#include "databases/sqlite/table_part.h"

#include <algorithm>
#include <utility>

#include "databases/execution/row_sorter.h"

namespace stockbook::databases {

int64_t KeyOf(sqlite3_value* stored) {
  const int type = sqlite3_value_type(stored);
  if (type == SQLITE_NULL) return kNullKey;
  const int64_t key = sqlite3_value_int64(stored);
  if (type != SQLITE_INTEGER || key == kNullKey) throw NotCovered{};
  return key;
}

std::string TablePart::RowNumber() const {
  const std::string& name = source->table->row_number;
  return name.empty() ? name : source->alias + "." + name;
}

void TablePart::AddRead(const TypedSql& output, size_t sink, std::vector<ColumnSink>& sinks) {
  std::string sql = output.sql;
  Form form = output.form == Form::kPlain ? ResultFormOf(output.cls) : output.form;
  auto sign = ValueFeed::Sign::kKept;
  if (output.column != nullptr) {
    sql = output.column->sql;
    if (output.column->form != Form::kPlain) form = output.column->form;
  } else if (output.negated != nullptr && output.negated->form != Form::kRawDate) {
    sql = output.negated->sql;
    if (output.negated->form != Form::kPlain) form = output.negated->form;
    sign = ValueFeed::Sign::kNegated;
  }
  auto same = std::find_if(reads.begin(), reads.end(),
                           [&](const TableRead& other) { return other.sql == sql && other.feed.form() == form; });
  if (same == reads.end()) same = reads.insert(reads.end(), TableRead{std::move(sql), ValueFeed(form), {}});
  same->feed.AddTarget(sinks[sink], sign);
  same->outputs.push_back({sink, sign});
}

RowQuery TablePart::QueryOf(const std::string& first, const std::string& hint, const std::string& more) const {
  RowQuery query;
  query.columns.push_back(first);
  query.columns.insert(query.columns.end(), key_columns.begin(), key_columns.end());
  for (const TableRead& read : reads) query.columns.push_back(read.sql);
  query.rest = " FROM " + QuotedName(source->table->name) + " AS " + source->alias + hint;
  const char* word = " WHERE ";
  for (const std::string& condition : conditions) {
    query.rest += word + condition;
    word = " AND ";
  }
  if (!more.empty()) query.rest += word + more;
  return query;
}

void TablePart::TakeRow(std::span<sqlite3_value* const> values) {
  auto value = values.begin();
  for (auto& column : keys) column.push_back(KeyOf(*value++));
  for (TableRead& read : reads) read.feed.Take(*value++);
  if (++rows >= kNoRow) throw NotCovered{};
}

void TablePart::TakeNullRow() {
  for (auto& column : keys) column.push_back(kNullKey);
  for (TableRead& read : reads) read.feed.TakeNull();
  ++rows;
}

void TablePart::Flush() {
  for (TableRead& read : reads) read.feed.Flush();
}

TablePart TablePart::WithSinks(std::vector<ColumnSink>& sinks) const {
  TablePart part;
  part.source = source;
  part.step = step;
  part.key_columns = key_columns;
  part.conditions = conditions;
  part.keys.resize(keys.size());
  for (const TableRead& read : reads) {
    part.reads.push_back({read.sql, ValueFeed(read.feed.form()), read.outputs});
    for (const TableRead::Output& output : read.outputs)
      part.reads.back().feed.AddTarget(sinks[output.sink], output.sign);
  }
  return part;
}

void TablePart::AppendKeysOf(const TablePart& part) {
  if (part.rows >= kNoRow - rows) throw NotCovered{};
  rows += part.rows;
  for (size_t column = 0; column < keys.size(); ++column)
    keys[column].insert(keys[column].end(), part.keys[column].begin(), part.keys[column].end());
}

}  // namespace stockbook::databases
