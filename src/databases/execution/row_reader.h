// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "databases/dialect/value_class.h"
#include "databases/execution/column_sink.h"

namespace stockbook::databases {

// How a server's connection reads rows: the engine's own SQL in, columns out.
class RowReader {
 public:
  RowReader() = default;
  RowReader(const RowReader&) = delete;
  RowReader& operator=(const RowReader&) = delete;
  virtual ~RowReader() = default;

  // Runs one SELECT and appends the values of its column i to sinks[i] as classes[i] says: money exactly, what is
  // beyond 1/10,000 rounded half to even; dates; whole numbers; doubles; text as clean UTF-8 (a repaired one marks its
  // sink as mended); kAny and kNull by the engine's own type. There are as many columns as classes and sinks. Returns
  // the number of rows. Throws platform::Error, also when it is cancelled or its time is up.
  virtual size_t Read(std::string_view sql, std::span<const ValueClass> classes, std::span<ColumnSink> sinks) = 0;
};

}  // namespace stockbook::databases
