// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "databases/dialect/expression_translator.h"

namespace stockbook::databases {

// Translates calls of the dialects' functions and aggregates, and the server's CAST and Convert; what their arguments
// are is left to the expressions it is given.
class CallTranslator {
 public:
  explicit CallTranslator(ExpressionTranslator& expressions) : expressions_(expressions) {}
  TypedSql Translate(const Expr& expr);

 private:
  // Whether a text shorter than its type is filled up with blanks.
  enum class Padding { kNone, kBlanks };

  TypedSql Function(const Expr& expr);
  TypedSql Aggregate(const Expr& expr, const std::string& name);
  TypedSql Choice(const Expr& expr);
  TypedSql FirstKnown(const std::vector<TypedSql>& values);
  TypedSql ZeroIfNull(const Expr& expr);
  TypedSql NullIf(const Expr& expr);
  TypedSql Cast(const Expr& expr);
  TypedSql CastToText(const Expr& expr, const TypedSql& value, Padding padding);
  static TypedSql Number(int64_t number);
  static void CheckCount(const Expr& expr, size_t least, size_t most);

  const Emitter& emitter() const { return expressions_.emitter(); }

  ExpressionTranslator& expressions_;
};

}  // namespace stockbook::databases
