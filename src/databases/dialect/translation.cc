// SPDX-License-Identifier: MIT
#include "databases/dialect/translation.h"

#include "databases/dialect/parser.h"
#include "databases/dialect/refusal.h"

namespace stockbook::databases {

Translation TranslateStatement(std::string_view statement, const Target& target, const TableFinder& find_table) {
  try {
    const Query query = ParseStatement(statement, target.dialect);
    Translation translation;
    translation.query = SelectTranslator(target, find_table).Translate(query);
    translation.plan = PlanStatement(query, target, find_table);
    return translation;
  } catch (const Refusal& refusal) {
    throw RefusedAt(statement, refusal);
  }
}

}  // namespace stockbook::databases
