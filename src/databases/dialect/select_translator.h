// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "databases/dialect/ast.h"
#include "databases/dialect/expression_translator.h"

namespace stockbook::databases {

// A column of a result.
struct ResultColumn {
  std::string name;
  ValueClass cls = ValueClass::kAny;
};

struct TranslatedQuery {
  std::string sql;  // its columns are called c0, c1, …
  std::vector<ResultColumn> columns;
};

// One step of a FROM that adds a table to those before it: `new_column` of the table equals `old_column` of one of
// them. Steps that are not of this kind have no columns.
struct JoinStep {
  JoinType type = JoinType::kInner;
  size_t source = 0;
  const BoundColumn* old_column = nullptr;
  const BoundColumn* new_column = nullptr;
};

// A SELECT with its names resolved, before it becomes text. Owns what its expressions point at.
struct BoundSelect {
  std::unique_ptr<Scope> scope;
  bool distinct = false;
  bool aggregated = false;
  std::optional<uint64_t> top;
  std::vector<ResultColumn> columns;
  std::vector<TypedSql> outputs;  // canonical
  std::string from;
  bool chained = false;  // one table after the other, joined by `joins`
  std::vector<JoinStep> joins;
  std::vector<TypedSql> conditions;         // of WHERE, all of which must hold
  std::vector<std::string> groups;          // as they compare with other expressions
  std::vector<std::string> written_groups;  // canonical
  std::string having;
  std::vector<std::string> order;    // of a single SELECT, written out
  std::vector<TypedSql> order_keys;  // the keys of the ORDER BY itself, canonical
  std::vector<bool> descending;      // of each key
  bool ordered_by_rows = false;      // `order` ends with the row numbers of all tables
};

// Translates whole queries. One translator serves one statement, so that each of its sources gets a name of its own.
// Borrows `find_table`.
class SelectTranslator {
 public:
  SelectTranslator(Dialect dialect, const TableFinder& find_table);

  TranslatedQuery Translate(const Query& query, const Scope* outer = nullptr);

  // Resolves one SELECT; `order` belongs to it when it is no arm of a UNION, else nullptr.
  BoundSelect Bind(const SelectCore& core, const Scope* outer, const std::vector<OrderItem>* order);
  // Its text, each output turned into the class that `classes` gives for it.
  static std::string Write(const BoundSelect& select, const std::vector<ValueClass>& classes);

  // The output column that an ORDER BY item of a UNION names, by name or by number from 1.
  static size_t ResolveOrder(const Expr& item, const std::vector<ResultColumn>& columns);

 private:
  // A join of the one chain that a FROM without commas is, or one elsewhere, as in parentheses.
  enum class JoinPlace { kInChain, kElsewhere };

  void BindFrom(const SelectCore& core, BoundSelect& select);
  void BindSource(const TableRef& ref, BoundSelect& select);
  void BindJoin(const TableRef& ref, BoundSelect& select, JoinPlace place);
  void BindOn(const TableRef& ref, BoundSelect& select, SourceSet left, SourceSet right, JoinStep& step);
  void CheckDesktopOn(const Expr& on, const Scope& scope, SourceSet left, SourceSet right) const;
  void BindItems(const SelectCore& core, BoundSelect& select);
  void AddAll(const SelectItem& item, BoundSelect& select);
  void BindWhere(const Expr& where, BoundSelect& select);
  void BindGroups(const SelectCore& core, BoundSelect& select);
  void BindOrder(const std::vector<OrderItem>& order, BoundSelect& select);
  void CheckGrouped(const TypedSql& value) const;
  static void AddRowNumbers(BoundSelect& select);
  ExpressionTranslator Expressions(const Scope& scope) { return {dialect_, scope, translate_subquery_}; }

  Dialect dialect_;
  const TableFinder& find_table_;
  size_t next_source_ = 0;
  ExpressionTranslator::QueryTranslator translate_subquery_;
};

}  // namespace stockbook::databases
