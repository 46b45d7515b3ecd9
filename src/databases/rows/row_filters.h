// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "databases/dialect/statement_needs.h"
#include "databases/inventory/inventory_schema.h"
#include "stockbook/databases/rows/row_source.h"

namespace stockbook::databases {

// What a statement asks of a table; no condition on it is left out that a row may fail and still count. Of bills and of
// lines it is the same filter, that of the lines with the period of the bills, because they are given together.
RowFilter FilterOf(const StatementNeeds& needs, TableName table);

// The period after which a statement leaves out bills, and with them the lines that it joins to them; empty where it
// knows of no period. Nothing for a statement that is no journal: one without such a limit or join.
std::optional<std::string> LastPeriodOf(const StatementNeeds& needs, TableName lines, TableName bills);

}  // namespace stockbook::databases
