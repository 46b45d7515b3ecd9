// SPDX-License-Identifier: MIT
#include "databases/dialect/sql_composer.h"

#include <algorithm>
#include <string>

namespace stockbook::databases {

bool IsCaseless(const TypedSql& value) {
  if (!value.constant) return false;
  const auto* text = value.constant->As<std::string>();
  return text == nullptr || std::all_of(text->begin(), text->end(), [](char c) {
           const auto byte = static_cast<unsigned char>(c);
           return byte < 'A' || byte > 'z';
         });
}

TypedSql Gathered(const std::vector<TypedSql>& parts) {
  TypedSql result;
  for (const TypedSql& part : parts) {
    result.sources.AddAll(part.sources);
    result.has_aggregate = result.has_aggregate || part.has_aggregate;
    if (!result.ungrouped) result.ungrouped = part.ungrouped;
  }
  return result;
}

TypedSql Not(TypedSql condition) {
  condition.sql = "(NOT " + condition.sql + ")";
  return condition;
}

}  // namespace stockbook::databases
