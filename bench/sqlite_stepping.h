// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "child_process.h"

namespace stockbook::bench {

// The desktop statement translated into SQLite's own language.
inline std::string PlainSql(std::string sql) {
  for (size_t at = sql.find(" & "); at != std::string::npos; at = sql.find(" & ", at)) sql.replace(at, 3, " || ");
  return sql;
}

// Reads every value of the row in its stored type.
inline size_t ReadRow(sqlite3_stmt* row) {
  size_t sum = 0;
  const int columns = sqlite3_column_count(row);
  for (int column = 0; column < columns; ++column) {
    switch (sqlite3_column_type(row, column)) {
      case SQLITE_INTEGER:
        sum += static_cast<size_t>(sqlite3_column_int64(row, column));
        break;
      case SQLITE_FLOAT:
        sum += static_cast<size_t>(sqlite3_column_double(row, column));
        break;
      case SQLITE_TEXT:
        sum += sqlite3_column_text(row, column)[0] + static_cast<size_t>(sqlite3_column_bytes(row, column));
        break;
      default:
        break;
    }
  }
  return sum;
}

struct StepCost {
  double seconds = 1e9;  // processor time
  double elapsed = 1e9;
};

// The cost of stepping the statement once through SQLite's own interface with its default settings. Runs in a
// process of its own, because the embedded connection's SQLite settings apply to a whole process.
inline StepCost MeasureStepping(const std::string& path, const std::string& sql) {
  return InChild([&] {
    sqlite3* database = nullptr;
    sqlite3_stmt* statement = nullptr;
    const double start = CpuSeconds();
    const double began = ElapsedSeconds();
    if (sqlite3_open(path.c_str(), &database) != SQLITE_OK ||
        sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
      std::fprintf(stderr, "%s\n", sqlite3_errmsg(database));
      std::exit(1);
    }
    size_t sum = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) sum += ReadRow(statement);
    benchmark::DoNotOptimize(sum);
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return StepCost{CpuSeconds() - start, ElapsedSeconds() - began};
  });
}

inline double StepSeconds(const std::string& path, const std::string& sql) {
  return MeasureStepping(path, sql).seconds;
}

}  // namespace stockbook::bench
