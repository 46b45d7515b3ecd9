// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace stockbook::databases {

struct Query;

enum class ExprKind {
  kNull,
  kBoolean,   // text: "-1" or "0"
  kInteger,   // text: the digits
  kDecimal,   // text: the digits
  kText,      // text
  kDate,      // text: yyyy-MM-dd[ HH:mm:ss]
  kColumn,    // text: the column; qualifier: its table, or empty
  kStar,      // the * of Count(*)
  kUnary,     // text: "-", "+" or "NOT"
  kBinary,    // text: the operator in upper case; two operands
  kConcat,    // a & b & …: all operands of one chain
  kIsNull,    // one operand
  kBetween,   // three operands
  kIn,        // the operand, then the list; or with query
  kLike,      // two operands
  kCase,      // [operand], when, then, …, [else]; see has_subject, has_else
  kCall,      // text: the function's name; operands: its arguments
  kCast,      // type_*: the type asked for; operands: the value, [the style]
  kSubquery,  // query
  kExists,    // query
};

// One node of an expression. A plain tree: children are owned, nothing points back.
struct Expr {
  ExprKind kind = ExprKind::kNull;
  size_t offset = 0;  // byte of the statement, for messages
  size_t depth = 1;   // levels of the tree below and including this node
  std::string text;
  std::string qualifier;
  std::vector<std::unique_ptr<Expr>> operands;
  std::unique_ptr<Query> query;
  bool negated = false;   // NOT IN, NOT BETWEEN, NOT LIKE, IS NOT NULL
  bool distinct = false;  // Count(DISTINCT …)
  bool has_subject = false;
  bool has_else = false;
  std::string type_name;  // lower case
  std::optional<size_t> type_length;
  int type_scale = 0;

  Expr(ExprKind the_kind, size_t the_offset);
  ~Expr();
};
using ExprPtr = std::unique_ptr<Expr>;

enum class JoinType { kInner, kLeft, kRight };

// A table, a derived table (query), or a join of two (left, right).
struct TableRef {
  size_t offset = 0;
  std::string name;
  std::string alias;
  std::unique_ptr<Query> query;
  JoinType join = JoinType::kInner;
  std::unique_ptr<TableRef> left;
  std::unique_ptr<TableRef> right;
  ExprPtr on;
};

// `*` (all_of empty), `t.*` (all_of "t") or an expression.
struct SelectItem {
  size_t offset = 0;
  std::string all_of;
  ExprPtr expr;
  std::string alias;
};

struct SelectCore {
  size_t offset = 0;
  bool distinct = false;
  std::optional<uint64_t> top;
  std::vector<SelectItem> items;
  std::vector<std::unique_ptr<TableRef>> from;
  ExprPtr where;
  std::vector<ExprPtr> group_by;
  ExprPtr having;
};

struct OrderItem {
  ExprPtr expr;
  bool descending = false;
};

// SELECT … [UNION [ALL] SELECT …]… [ORDER BY …]. union_all[i] joins arms i and i + 1.
struct Query {
  std::vector<SelectCore> arms;
  std::vector<bool> union_all;
  std::vector<OrderItem> order;
};

}  // namespace stockbook::databases
