// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "databases/dialect/ast.h"
#include "databases/dialect/dialect.h"
#include "databases/dialect/token_stream.h"

namespace stockbook::databases {

// Counts the depth of the parser's recursion and refuses to go deeper than kMaxNesting.
class NestingGuard {
 public:
  static constexpr int kMaxNesting = 100;
  NestingGuard(int& nesting, size_t offset);
  ~NestingGuard() { --nesting_; }
  NestingGuard(const NestingGuard&) = delete;
  NestingGuard& operator=(const NestingGuard&) = delete;

 private:
  int& nesting_;
};

// Reads expressions, by recursive descent with the operator ranks of the dialect. Subqueries go back to the statement
// parser through `parse_query`.
class ExpressionParser {
 public:
  using QueryParser = std::function<std::unique_ptr<Query>()>;
  ExpressionParser(TokenStream& tokens, Dialect dialect, int& nesting, QueryParser parse_query)
      : tokens_(tokens), dialect_(dialect), nesting_(nesting), parse_query_(std::move(parse_query)) {}

  ExprPtr Parse();

 private:
  ExprPtr ParseAnd();
  ExprPtr ParseNot();
  ExprPtr ParseComparison();
  // These begin at the operator, or at the NOT before it.
  ExprPtr ParseIn(ExprPtr left);
  ExprPtr ParseBetween(ExprPtr left);
  ExprPtr ParseLike(ExprPtr left);
  ExprPtr ParseIsNull(ExprPtr left);
  // Operators of this rank and tighter ones.
  ExprPtr ParseOperators(int loosest);
  void RefuseForeignOperator() const;
  ExprPtr ParseSign();
  ExprPtr ParsePower();
  ExprPtr ParsePrimary();
  ExprPtr ParseLiteral();
  ExprPtr ParseParenthesis();
  ExprPtr ParseCase();
  ExprPtr ParseNameOrCall();
  ExprPtr ParseCall(const std::string& name, size_t offset);
  ExprPtr ParseCast(size_t offset);
  ExprPtr ParseConvert(size_t offset);
  void ParseType(Expr& cast);

  int RankOf(const Token& token) const;
  ExprPtr Join(std::string op, size_t offset, ExprPtr left, ExprPtr right) const;
  static ExprPtr WithChildren(ExprPtr node);

  TokenStream& tokens_;
  Dialect dialect_;
  int& nesting_;
  QueryParser parse_query_;
};

}  // namespace stockbook::databases
