// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "databases/dialect/select_translator.h"
#include "databases/dialect/statement_plan.h"
#include "databases/dialect/target.h"

namespace stockbook::databases {

// A statement in the language of an engine, which gives the right rows in the right order for any statement, and, for
// statements of a known shape, a plan that finds them faster.
struct Translation {
  TranslatedQuery query;
  std::optional<StatementPlan> plan;
};

// Throws platform::Error, with the reason and the place, for anything that the dialect or the schema does not know.
Translation TranslateStatement(std::string_view statement, const Target& target, const TableFinder& find_table);

}  // namespace stockbook::databases
