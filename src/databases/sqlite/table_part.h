// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "databases/dialect/statement_plan.h"
#include "databases/execution/column_sink.h"
#include "databases/sqlite/row_visitor.h"
#include "databases/sqlite/value_feed.h"

namespace stockbook::databases {

inline constexpr int64_t kNullKey = INT64_MIN;
inline constexpr uint32_t kNoRow = UINT32_MAX;

// The key that a row is joined by. Throws NotCovered unless it is a whole number or null.
int64_t KeyOf(sqlite3_value* stored);

// One value read from a table's rows, for the outputs that show it.
struct TableRead {
  struct Output {
    size_t sink;
    ValueFeed::Sign sign;
  };
  std::string sql;
  ValueFeed feed;
  std::vector<Output> outputs;
};

// One table of an arm: what to read from it, and what has been read.
struct TablePart {
  const BoundSource* source = nullptr;
  const JoinStep* step = nullptr;  // nullptr for the first table
  size_t parent = 0;               // the table whose column the step compares with
  size_t parent_key = 0;           // which of the parent's key columns that is
  std::vector<std::string> key_columns;
  std::vector<std::string> conditions;
  std::vector<TableRead> reads;

  size_t rows = 0;
  std::vector<std::vector<int64_t>> keys;  // of each key column, kNullKey for null

  bool IsLeft() const { return step != nullptr && step->type == JoinType::kLeft; }
  // The table's row number as SQL; empty when it has none.
  std::string RowNumber() const;
  void AddRead(const TypedSql& output, size_t sink, std::vector<ColumnSink>& sinks);

  // SELECT `first`, the keys, the values FROM the table `hint` WHERE its conditions and `more`.
  RowQuery QueryOf(const std::string& first, const std::string& hint, const std::string& more) const;
  // The row's values from the keys on.
  void TakeRow(std::span<sqlite3_value* const> values);
  void TakeNullRow();
  void Flush();

  // The same table with nothing read, for other sinks, and back with what was read into those. The latter leaves the
  // columns to whoever has the sinks.
  TablePart WithSinks(std::vector<ColumnSink>& sinks) const;
  void AppendKeysOf(const TablePart& part);
};

}  // namespace stockbook::databases
