// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "databases/dialect/value_class.h"
#include "databases/execution/column_sink.h"
#include "databases/odbc/odbc_rowset.h"

namespace stockbook::databases {

// Appends a column of a block as values of the class, see RowReader; O(rows). Throws base::ArithmeticError for a number
// that is none of them.
void AppendColumn(const OdbcRowset& block, size_t column, ValueClass cls, ColumnSink& sink);

}  // namespace stockbook::databases
