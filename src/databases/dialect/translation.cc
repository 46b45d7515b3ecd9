// SPDX-License-Identifier: MIT
#include "databases/dialect/translation.h"

#include <utility>

#include "databases/dialect/parser.h"
#include "databases/dialect/refusal.h"

namespace stockbook::databases {

Translation::Translation(std::string_view statement, const Target& target, TableFinder find_table)
    : statement_(statement), target_(target), find_table_(std::move(find_table)) {
  try {
    query_ = ParseStatement(statement_, target_.dialect);
    plan_ = PlanStatement(query_, target_, find_table_);
  } catch (const Refusal& refusal) {
    throw RefusedAt(statement_, refusal);
  }
  if (!plan_) Whole();
}

const TranslatedQuery& Translation::Whole() {
  if (whole_) return *whole_;
  try {
    whole_ = SelectTranslator(target_, find_table_).Translate(query_);
  } catch (const Refusal& refusal) {
    throw RefusedAt(statement_, refusal);
  }
  return *whole_;
}

}  // namespace stockbook::databases
