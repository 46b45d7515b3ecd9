// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "databases/database_file.h"

namespace stockbook::testing {

// The rows that SQLite itself gives for a statement in its own language, in its order: the values as texts joined by
// "|", null as "~". Nothing of the dialects takes part.
std::vector<std::string> PlainRows(const DatabaseFile& file, const std::string& sql);

// The rows of a result by the fastest plan, the plan over arms and the whole statement, which the test expects to be
// the same: the texts of some of its fields, or all of them, joined like those of PlainRows; or "error: " and its text.
std::vector<std::string> RowsOfEveryPlan(const std::string& connection, const std::string& statement,
                                         const std::vector<std::string>& fields = {});

}  // namespace stockbook::testing
