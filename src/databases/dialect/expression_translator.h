// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "databases/dialect/ast.h"
#include "databases/dialect/target.h"
#include "databases/dialect/typed_sql.h"

namespace stockbook::databases {

// What a subquery gives to the expression around it: its text, and the classes of its columns.
struct SubquerySql {
  std::string sql;
  std::vector<ValueClass> classes;
};

// Resolves the names of expressions, decides the class of each value and says to the emitter what is meant.
class ExpressionTranslator {
 public:
  using QueryTranslator = std::function<SubquerySql(const Query&, const Scope&)>;
  ExpressionTranslator(const Target& target, const Scope& scope, const QueryTranslator& translate_query)
      : target_(target), scope_(scope), translate_query_(translate_query) {}

  // The raw texts of the GROUP BY expressions: what equals one of them counts as grouped.
  void SetGroups(const std::vector<std::string>* groups) { groups_ = groups; }
  // Aggregates are refused where rows are chosen: "WHERE", "ON", "GROUP BY".
  void ForbidAggregates(const char* where) { no_aggregates_in_ = where; }

  // Any expression, a condition included.
  TypedSql Translate(const Expr& expr);
  // As a value: a condition becomes -1 or 0 in the desktop dialect.
  TypedSql TranslateValue(const Expr& expr);
  // As a condition: a number is true when it is not 0.
  TypedSql TranslateCondition(const Expr& expr);
  // Each as a value.
  std::vector<TypedSql> TranslateValues(const std::vector<ExprPtr>& operands);
  // Throws Refusal where the aggregate may not be: inside another one, or where ForbidAggregates says.
  void CheckAggregate(const Expr& aggregate) const;
  // As the argument of an aggregate: a value whose columns need no group.
  TypedSql TranslateAggregated(const Expr& argument);

  Dialect dialect() const { return target_.dialect; }
  const Emitter& emitter() const { return target_.emitter; }

 private:
  TypedSql TranslateNode(const Expr& expr);
  TypedSql Literal(const Expr& expr) const;
  TypedSql Column(const Expr& expr) const;
  TypedSql Unary(const Expr& expr);
  TypedSql Binary(const Expr& expr);
  TypedSql Arithmetic(const Expr& expr);
  TypedSql BitAnd(const Expr& expr);
  TypedSql Concat(const Expr& expr);
  TypedSql IsNull(const Expr& expr);
  TypedSql Between(const Expr& expr);
  TypedSql In(const Expr& expr);
  TypedSql Like(const Expr& expr);
  TypedSql Case(const Expr& expr);
  TypedSql Subquery(const Expr& expr);

  Target target_;
  const Scope& scope_;
  const QueryTranslator& translate_query_;
  const std::vector<std::string>* groups_ = nullptr;
  const char* no_aggregates_in_ = nullptr;
  bool in_aggregate_ = false;
};

}  // namespace stockbook::databases
