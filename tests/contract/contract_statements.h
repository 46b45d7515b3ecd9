// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "databases/database_file.h"
#include "databases/dialect/dialect.h"

namespace stockbook::testing {

// Some thousand lines more for an inventory of CreateInventory and FillInventory, many of them alike.
void AddMovements(DatabaseFile& file);

// The statements that the control sends in the dialect: journals, balances, class lists, subjects, periods, sources.
std::vector<std::string> ControlStatements(databases::Dialect dialect);

// The journals of partners and projects, in the server dialect and in the desktop dialect.
std::vector<std::pair<std::string, std::string>> PartnerJournals();

// Statements with class codes that try to read, change or stop what is none of theirs.
std::vector<std::string> StatementsWithAttacks();

}  // namespace stockbook::testing
