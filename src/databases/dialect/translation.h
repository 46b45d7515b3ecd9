// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "databases/dialect/ast.h"
#include "databases/dialect/select_translator.h"
#include "databases/dialect/statement_plan.h"
#include "databases/dialect/target.h"

namespace stockbook::databases {

// A statement read and understood: for statements of a known shape a plan that finds its rows fast, and for any the
// statement in the language of the engine, which gives the right rows in the right order. The second is written when it
// is first asked for. The target's emitter and the tables outlive it.
class Translation {
 public:
  // Throws platform::Error, with the reason and the place, for anything that the dialect or the schema does not know.
  Translation(std::string_view statement, const Target& target, TableFinder find_table);

  const std::optional<StatementPlan>& plan() const { return plan_; }
  // Throws like the constructor.
  const TranslatedQuery& Whole();
  // The fields of the result.
  const std::vector<ResultColumn>& columns() { return plan_ ? plan_->columns : Whole().columns; }

 private:
  std::string statement_;
  Target target_;
  TableFinder find_table_;
  Query query_;
  std::optional<StatementPlan> plan_;
  std::optional<TranslatedQuery> whole_;
};

}  // namespace stockbook::databases
