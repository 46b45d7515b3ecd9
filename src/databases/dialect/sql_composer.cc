// SPDX-License-Identifier: MIT
#include "databases/dialect/sql_composer.h"

#include <algorithm>
#include <string>
#include <utility>

namespace stockbook::databases {
namespace {

// A constant with which every text compares the same whether case is minded or not: a number, or a text of bytes that
// are neither letters nor between the two alphabets.
bool IsCaseless(const TypedSql& value) {
  if (!value.constant) return false;
  const auto* text = value.constant->As<std::string>();
  return text == nullptr || std::all_of(text->begin(), text->end(), [](char c) {
           const auto byte = static_cast<unsigned char>(c);
           return byte < 'A' || byte > 'z';
         });
}

}  // namespace

bool IsPlain(const TypedSql& value) { return value.form == Form::kPlain || value.form == Form::kReal; }

TypedSql Gathered(const std::vector<TypedSql>& parts) {
  TypedSql result;
  for (const TypedSql& part : parts) {
    result.sources.AddAll(part.sources);
    result.has_aggregate = result.has_aggregate || part.has_aggregate;
    if (!result.ungrouped) result.ungrouped = part.ungrouped;
  }
  return result;
}

TypedSql Call(std::string_view function, const std::vector<TypedSql>& arguments, ValueClass cls) {
  TypedSql result = Gathered(arguments);
  result.sql.append(function).append("('");
  for (const TypedSql& argument : arguments) result.sql += static_cast<char>(argument.form);
  result.sql += "'";
  for (const TypedSql& argument : arguments) result.sql.append(", ").append(argument.sql);
  result.sql += ")";
  result.cls = cls;
  result.form = ResultFormOf(cls);
  return result;
}

TypedSql Canonical(TypedSql value) {
  if (value.form != Form::kRawMoney && value.form != Form::kRawDate) return value;
  value.sql = std::string("sb_value('") + static_cast<char>(value.form) + "', " + value.sql + ")";
  value.form = ResultFormOf(value.cls);
  return value;
}

TypedSql ConvertTo(TypedSql value, ValueClass cls) {
  if (value.cls == cls || value.cls == ValueClass::kNull) return Canonical(std::move(value));
  if (cls == ValueClass::kMoney) {
    if (const auto money = value.constant ? value.constant->AsMoney() : std::nullopt) {
      value.sql = std::to_string(money->units());
      value.constant = base::Value(*money);
    } else {
      // A plain value is read as a stored amount would be.
      value.sql = "sb_value('M', " + value.sql + ")";
      value.negated = value.column = nullptr;
      value.constant.reset();
    }
  } else if (cls == ValueClass::kText && value.cls == ValueClass::kMoney) {
    value.sql = std::string("sb_text('") + static_cast<char>(value.form) + "', " + value.sql + ")";
    value.negated = value.column = nullptr;
  } else {
    value = Canonical(std::move(value));
    if (value.form == Form::kDateText) value.negated = value.column = nullptr;
  }
  value.cls = cls;
  value.form = ResultFormOf(cls);
  return value;
}

bool NeedsCollation(const TypedSql& left, const TypedSql& right) {
  if (IsCaseless(left) || IsCaseless(right)) return false;
  if (left.cls == ValueClass::kText || right.cls == ValueClass::kText) return true;
  return !IsNumeric(left.cls) && !IsNumeric(right.cls);
}

std::string Collated(const TypedSql& value) { return value.sql + " COLLATE " + kTextCollation; }

TypedSql Comparison(std::string_view op, const TypedSql& left, const TypedSql& right) {
  TypedSql result;
  const bool dates = left.cls == ValueClass::kDate && right.cls == ValueClass::kDate;
  if (dates || (IsPlain(left) && IsPlain(right))) {
    result = Gathered({left, right});
    result.sql.append("(")
        .append(dates || !NeedsCollation(left, right) ? Canonical(left).sql : Collated(left))
        .append(" ")
        .append(op)
        .append(" ")
        .append(Canonical(right).sql)
        .append(")");
  } else {
    result = Call("sb_compare", {left, right}, ValueClass::kInteger);
    result.sql.insert(0, "(").append(" ").append(op).append(" 0)");
  }
  result.cls = ValueClass::kBoolean;
  result.form = Form::kPlain;
  return result;
}

TypedSql Not(TypedSql condition) {
  condition.sql = "(NOT " + condition.sql + ")";
  return condition;
}

}  // namespace stockbook::databases
