// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "databases/dialect/ast.h"
#include "databases/dialect/dialect.h"
#include "databases/dialect/typed_sql.h"

namespace stockbook::databases {

// What a subquery gives to the expression around it: its text, and the class of its one column.
struct SubquerySql {
  std::string sql;
  std::vector<ValueClass> classes;
};

// Turns expressions into SQLite's language. Everything that touches money or dates, and every function, becomes a call
// of one of the room's own functions (sb_…) whose first argument spells the forms of the others; plain comparisons stay
// SQLite's own, so that its indexes serve them.
class ExpressionTranslator {
 public:
  using QueryTranslator = std::function<SubquerySql(const Query&, const Scope&)>;
  ExpressionTranslator(Dialect dialect, const Scope& scope, const QueryTranslator& translate_query)
      : dialect_(dialect), scope_(scope), translate_query_(translate_query) {}

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

  // The same value in the form that results and derived tables have.
  static TypedSql Canonical(TypedSql value);
  // The canonical value turned into another class, as Unify asks for it.
  static TypedSql ConvertTo(TypedSql value, ValueClass cls);

 private:
  friend class CallTranslator;
  TypedSql TranslateNode(const Expr& expr);
  TypedSql Literal(const Expr& expr) const;
  TypedSql Column(const Expr& expr) const;
  TypedSql Unary(const Expr& expr);
  TypedSql Binary(const Expr& expr);
  TypedSql Arithmetic(const Expr& expr);
  TypedSql BitAnd(const Expr& expr);
  TypedSql Comparison(const std::string& op, const TypedSql& left, const TypedSql& right) const;
  TypedSql Concat(const Expr& expr);
  TypedSql Between(const Expr& expr);
  TypedSql In(const Expr& expr);
  TypedSql InQuery(const Expr& expr, const TypedSql& value);
  TypedSql Like(const Expr& expr);
  TypedSql Case(const Expr& expr);
  TypedSql Subquery(const Expr& expr);

  std::vector<TypedSql> TranslateValues(const std::vector<ExprPtr>& operands);
  // function('forms', a, b, …) of the class.
  static TypedSql Call(std::string_view function, const std::vector<TypedSql>& arguments, ValueClass cls);
  // What the parts have in common, without text: their sources, aggregates and ungrouped columns.
  static TypedSql Gathered(const std::vector<TypedSql>& parts);
  static TypedSql Negated(TypedSql condition, bool negated);

  Dialect dialect_;
  const Scope& scope_;
  const QueryTranslator& translate_query_;
  const std::vector<std::string>* groups_ = nullptr;
  const char* no_aggregates_in_ = nullptr;
  bool in_aggregate_ = false;
};

}  // namespace stockbook::databases
