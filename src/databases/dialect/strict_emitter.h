// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "databases/dialect/emitter.h"
#include "databases/dialect/like_pattern.h"

namespace stockbook::databases {

// How an engine writes one of the scalar functions: $1, $2, … are the arguments, converted as the letter after the
// number says: t text, i whole number, n small whole number, r double, m money, d date; without a letter as it is.
struct FunctionTemplate {
  std::string_view function;
  size_t arguments;
  std::string_view text;
};

// What Convert asks for: a text of so many characters, filled up with blanks or not, with dates in one of the server's
// numbered styles.
struct TextType {
  int64_t length = 0;
  bool padded = false;
  int64_t style = 0;
};

// What engines have in common whose columns have types that they insist on. Values are in the engine's own types, and
// every conversion is written out: numbers and dates in texts are read where they spell one and are null otherwise;
// texts compare without ASCII case; what the two dialects leave open (kAny) is a text.
class StrictEmitter : public Emitter {
 public:
  std::string Literal(std::string_view text, ValueClass cls) const override;
  Form ColumnForm(ValueClass) const override { return Form::kPlain; }
  ValueClass Common(ValueClass left, ValueClass right) const override;
  TypedSql Call(std::string_view function, const std::vector<TypedSql>& arguments, ValueClass cls,
                size_t offset) const override;
  TypedSql Canonical(TypedSql value) const override { return value; }
  TypedSql ConvertTo(TypedSql value, ValueClass cls) const override;
  TypedSql NumberOf(TypedSql condition) const override;
  TypedSql Truth(const TypedSql& value, size_t offset) const override;
  TypedSql Comparison(std::string_view op, const TypedSql& left, const TypedSql& right, size_t offset) const override;
  TypedSql Between(const std::vector<TypedSql>& parts, size_t offset) const override;
  TypedSql In(const TypedSql& value, const std::vector<TypedSql>& items, size_t offset) const override;
  TypedSql InQuery(const TypedSql& value, const std::string& query, ValueClass cls, size_t offset) const override;
  TypedSql Aggregate(const AggregateCall& call, const TypedSql& value) const override;
  bool OrdersUnasked() const override { return true; }

 protected:
  // The engine's name of a type for values of the class.
  virtual std::string_view TypeName(ValueClass cls) const = 0;
  virtual std::string TextLiteral(std::string_view text) const = 0;
  virtual std::string DateLiteral(std::string_view text) const = 0;
  virtual std::string_view ConcatOperator() const = 0;
  // Texts of values as the dialects show them.
  virtual std::string TextOfReal(const std::string& sql) const = 0;
  virtual std::string TextOfMoney(const std::string& sql) const = 0;
  virtual std::string TextOfDate(const std::string& sql) const = 0;
  // A double or money as the nearest whole number.
  virtual std::string WholeOf(const std::string& sql) const = 0;
  // What a text spells, or null.
  virtual std::string NumberInText(const std::string& sql) const = 0;
  virtual std::string DateInText(const std::string& sql) const = 0;
  // A text that is equal to another's if the two differ in nothing but ASCII case, and one with the order of its bytes.
  virtual std::string Folded(const TypedSql& text) const = 0;
  virtual std::string ByBytes(const std::string& sql) const = 0;
  // The sum or average of doubles or whole numbers, of the class.
  virtual std::string SumOf(const AggregateCall& call, const std::string& sql, ValueClass cls) const = 0;
  // Of the scalar functions, those that have the same words with every argument; beside them add_days and days_between.
  virtual std::span<const FunctionTemplate> Templates() const = 0;
  // LIKE with a constant pattern.
  virtual std::string Like(const TypedSql& text, std::string_view pattern, Wildcards wildcards) const = 0;
  // Format and Convert with constant patterns and styles; empty when there are no words for them.
  virtual std::string Format(const TypedSql& value, std::string_view pattern) const = 0;
  virtual std::string ToText(const TypedSql& value, const TextType& type) const = 0;

  // The value as one of another class, every conversion written out.
  std::string As(ValueClass cls, const TypedSql& value) const;
  std::string Cast(const std::string& sql, ValueClass cls) const;

 private:
  std::string ConstantAs(ValueClass cls, const base::Value& value) const;
  std::string Fill(std::string_view form, const std::vector<TypedSql>& arguments) const;
  std::string FillNamed(std::string_view name, const std::vector<TypedSql>& arguments) const;
  std::string Arithmetic(std::string_view function, const std::vector<TypedSql>& arguments, ValueClass& cls) const;
  std::string Sum(std::string_view function, const std::vector<TypedSql>& arguments, ValueClass& cls) const;
  std::string Concat(const std::vector<TypedSql>& arguments) const;
  std::string Special(std::string_view function, const std::vector<TypedSql>& arguments, size_t offset) const;
  std::string CompareTexts(std::string_view op, const TypedSql& left, const TypedSql& right) const;
};

}  // namespace stockbook::databases
