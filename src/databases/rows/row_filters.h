// SPDX-License-Identifier: MIT
#pragma once

#include "databases/dialect/statement_needs.h"
#include "databases/inventory/inventory_schema.h"
#include "stockbook/databases/rows/row_source.h"

namespace stockbook::databases {

// What a statement asks of a table; no condition on it is left out that a row may fail and still count. Of bills and of
// lines it is the same filter, that of the lines with the period of the bills, because they are given together.
RowFilter FilterOf(const StatementNeeds& needs, TableName table);

}  // namespace stockbook::databases
