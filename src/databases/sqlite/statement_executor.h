// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "databases/dialect/select_translator.h"
#include "databases/sqlite/database.h"
#include "platform/recordset.h"

namespace stockbook::databases {

// Runs a translated statement as a whole: SQLite finds, joins, sorts and removes duplicates. Right for every statement.
std::vector<platform::Field> ExecuteStatement(const Database& database, const TranslatedQuery& query);

}  // namespace stockbook::databases
