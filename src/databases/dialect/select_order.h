// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "databases/dialect/ast.h"
#include "databases/dialect/bound_select.h"
#include "databases/dialect/emitter.h"
#include "databases/dialect/expression_translator.h"

namespace stockbook::databases {

// A column as an expression, before it is known whether it has to be grouped.
TypedSql ColumnValue(const BoundColumn& column);
// Throws Refusal for a value that has a column outside every aggregate and grouped expression.
void CheckGrouped(const TypedSql& value);
// The output column that an ORDER BY item names, by name or by number from 1; throws Refusal when there is none.
size_t ResolveOrder(const Expr& item, const std::vector<ResultColumn>& columns);

// Decides in which order the rows of one SELECT come: what its ORDER BY says, then the order of its tables.
class SelectOrder {
 public:
  explicit SelectOrder(const Emitter& emitter) : emitter_(emitter) {}

  void Bind(const std::vector<OrderItem>& order, ExpressionTranslator& expressions, BoundSelect& select) const;
  // For a SELECT without ORDER BY, where the engine gives rows in any order.
  void BindUnasked(BoundSelect& select) const;

 private:
  void AddRowNumbers(BoundSelect& select) const;
  void AddRowKeys(BoundSelect& select) const;

  const Emitter& emitter_;
};

}  // namespace stockbook::databases
