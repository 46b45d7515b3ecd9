// SPDX-License-Identifier: MIT
#include "databases/dialect/translation.h"

#include "databases/dialect/parser.h"
#include "databases/dialect/refusal.h"

namespace stockbook::databases {

Translation TranslateStatement(std::string_view statement, Dialect dialect, SchemaSource& schema) {
  try {
    const Query query = ParseStatement(statement, dialect);
    Translation translation;
    translation.query = SelectTranslator(dialect, schema).Translate(query);
    translation.plan = PlanStatement(query, dialect, schema);
    return translation;
  } catch (const Refusal& refusal) {
    throw RefusedAt(statement, refusal);
  }
}

}  // namespace stockbook::databases
