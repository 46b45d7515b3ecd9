// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "databases/dialect/dialect.h"
#include "databases/dialect/select_translator.h"
#include "databases/dialect/statement_plan.h"

namespace stockbook::databases {

// A statement in SQLite's language, which gives the right rows in the right order for any statement, and, for
// statements of a known shape, a plan that finds them faster.
struct Translation {
  TranslatedQuery query;
  std::optional<StatementPlan> plan;
};

// Throws platform::Error, with the reason and the place, for anything that the dialect or the schema does not know.
Translation TranslateStatement(std::string_view statement, Dialect dialect, const TableFinder& find_table);

}  // namespace stockbook::databases
