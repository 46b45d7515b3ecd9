// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "databases/dialect/ast.h"
#include "databases/dialect/bound_select.h"
#include "databases/dialect/expression_translator.h"

namespace stockbook::databases {

struct TranslatedQuery {
  std::string sql;  // its columns are called c0, c1, …
  std::vector<ResultColumn> columns;
};

// Translates whole queries. One translator serves one statement, so that each of its sources gets a name of its own.
// Borrows `find_table`.
class SelectTranslator {
 public:
  SelectTranslator(const Target& target, const TableFinder& find_table);

  TranslatedQuery Translate(const Query& query, const Scope* outer = nullptr);

  // Resolves one SELECT; `order` belongs to it when it is no arm of a UNION, else nullptr.
  BoundSelect Bind(const SelectCore& core, const Scope* outer, const std::vector<OrderItem>* order);
  // Its text with these outputs, each turned into the class that `classes` gives for it, and without any order.
  std::string Write(const BoundSelect& select, const std::vector<TypedSql>& outputs,
                    const std::vector<ValueClass>& classes) const;

 private:
  // A join of the one chain that a FROM without commas is, or one elsewhere, as in parentheses.
  enum class JoinPlace { kInChain, kElsewhere };

  TranslatedQuery TranslateSingle(const Query& query, const Scope* outer);
  TranslatedQuery TranslateUnion(const Query& query, const Scope* outer);
  static std::vector<Emitter::UnionKey> DistinctKeys(const Query& query, const BoundSelect& select);
  void BindFrom(const SelectCore& core, BoundSelect& select);
  void BindSource(const TableRef& ref, BoundSelect& select);
  void BindJoin(const TableRef& ref, BoundSelect& select, JoinPlace place);
  void BindOn(const TableRef& ref, BoundSelect& select, SourceSet left, SourceSet right, JoinStep& step);
  void CheckDesktopOn(const Expr& on, const Scope& scope, SourceSet left, SourceSet right) const;
  void BindItems(const SelectCore& core, BoundSelect& select);
  void AddAll(const SelectItem& item, BoundSelect& select);
  void BindWhere(const Expr& where, BoundSelect& select);
  void BindGroups(const SelectCore& core, BoundSelect& select);
  ExpressionTranslator Expressions(const Scope& scope) { return {target_, scope, translate_subquery_}; }
  const Emitter& emitter() const { return target_.emitter; }

  Target target_;
  const TableFinder& find_table_;
  size_t next_source_ = 0;
  size_t depth_ = 0;  // of the query that is being translated: 1 for the statement itself
  ExpressionTranslator::QueryTranslator translate_subquery_;
};

}  // namespace stockbook::databases
