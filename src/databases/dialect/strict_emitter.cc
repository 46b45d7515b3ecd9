// SPDX-License-Identifier: MIT
#include "databases/dialect/strict_emitter.h"

#include <algorithm>
#include <utility>

#include "base/number.h"
#include "base/text.h"
#include "databases/dialect/date_functions.h"
#include "databases/dialect/refusal.h"
#include "databases/dialect/sql_composer.h"

namespace stockbook::databases {
namespace {

bool IsTextual(ValueClass cls) { return cls == ValueClass::kText || cls == ValueClass::kAny; }

// The class that a sum, a difference or a product of the two is counted in.
ValueClass CountedIn(ValueClass left, ValueClass right) {
  if (left == ValueClass::kMoney || right == ValueClass::kMoney) return ValueClass::kMoney;
  const bool wholes = left == ValueClass::kInteger && right == ValueClass::kInteger;
  return wholes ? ValueClass::kInteger : ValueClass::kReal;
}

TypedSql Finished(const std::vector<TypedSql>& parts, std::string sql, ValueClass cls) {
  TypedSql result = Gathered(parts);
  result.sql = std::move(sql);
  result.cls = cls;
  return result;
}

int64_t ConstantWhole(const TypedSql& value) {
  const auto* whole = value.constant ? value.constant->As<int64_t>() : nullptr;
  return whole == nullptr ? 0 : *whole;
}

const std::string* ConstantText(const TypedSql& value) {
  return value.constant ? value.constant->As<std::string>() : nullptr;
}

}  // namespace

std::string StrictEmitter::Literal(std::string_view text, ValueClass cls) const {
  switch (cls) {
    case ValueClass::kNull:
      return "NULL";
    case ValueClass::kText:
      return TextLiteral(text);
    case ValueClass::kDate:
      return DateLiteral(text);
    case ValueClass::kReal:
    case ValueClass::kMoney:
      return Cast(std::string(text), cls);
    default:
      return std::string(text);
  }
}

ValueClass StrictEmitter::Common(ValueClass left, ValueClass right) const {
  const ValueClass cls = Unify(left, right);
  return cls == ValueClass::kAny ? ValueClass::kText : cls;
}

std::string StrictEmitter::Cast(const std::string& sql, ValueClass cls) const {
  return "CAST(" + sql + " AS " + std::string(TypeName(cls)) + ")";
}

std::string StrictEmitter::ConstantAs(ValueClass cls, const base::Value& value) const {
  if (value.IsNull()) return Cast("NULL", cls);
  if (cls == ValueClass::kText) return TextLiteral(value.Text());
  if (cls == ValueClass::kDate) {
    const auto* text = value.As<std::string>();
    const auto date = text != nullptr ? ReadDateText(*text) : value.AsDate();
    return date ? DateLiteral(date->Text()) : Cast("NULL", cls);
  }
  if (cls == ValueClass::kMoney) {
    const auto money = value.AsMoney();
    return Cast(money ? money->Text() : "NULL", cls);
  }
  if (cls == ValueClass::kInteger) {
    const auto whole = value.AsInteger();
    return whole ? std::to_string(*whole) : Cast("NULL", cls);
  }
  const auto number = value.Number();
  return Cast(number ? base::NumberText(*number) : "NULL", ValueClass::kReal);
}

std::string StrictEmitter::As(ValueClass cls, const TypedSql& value) const {
  if (value.cls == ValueClass::kNull) return Cast("NULL", cls);
  if (value.cls == cls) return value.sql;
  if (value.constant) return ConstantAs(cls, *value.constant);
  const bool text = IsTextual(value.cls);
  const std::string read = value.cls == ValueClass::kAny ? Cast(value.sql, ValueClass::kText) : value.sql;
  switch (cls) {
    case ValueClass::kText:
    case ValueClass::kAny:
      if (value.cls == ValueClass::kReal) return TextOfReal(value.sql);
      if (value.cls == ValueClass::kMoney) return TextOfMoney(value.sql);
      if (value.cls == ValueClass::kDate) return TextOfDate(value.sql);
      return text ? read : Cast(value.sql, ValueClass::kText);
    case ValueClass::kDate:
      return text ? DateInText(read) : FillNamed("date_of_days", {value});
    case ValueClass::kInteger:
      return WholeOf(text ? NumberInText(read) : value.sql);
    default:
      if (value.cls == ValueClass::kDate) return FillNamed("days_of_date", {value});
      return text ? NumberInText(read) : Cast(value.sql, cls);
  }
}

TypedSql StrictEmitter::ConvertTo(TypedSql value, ValueClass cls) const {
  if (value.cls == cls || value.cls == ValueClass::kNull || cls == ValueClass::kNull) return value;
  value.sql = As(cls, value);
  value.cls = cls;
  value.column = value.negated = nullptr;
  if (value.constant && cls == ValueClass::kText) value.constant = base::Value(value.constant->Text());
  return value;
}

TypedSql StrictEmitter::NumberOf(TypedSql condition) const {
  condition.sql = "(CASE WHEN " + condition.sql + " THEN -1 WHEN NOT " + condition.sql + " THEN 0 END)";
  condition.cls = ValueClass::kInteger;
  return condition;
}

TypedSql StrictEmitter::Truth(const TypedSql& value, size_t) const {
  const std::string number = IsNumeric(value.cls) ? value.sql : As(ValueClass::kReal, value);
  return Finished({value}, "(" + number + " <> 0)", ValueClass::kBoolean);
}

std::string StrictEmitter::CompareTexts(std::string_view op, const TypedSql& left, const TypedSql& right) const {
  const bool caseless = IsCaseless(left) || IsCaseless(right);
  const bool equality = op == "=" || op == "<>";
  const std::string a = caseless ? As(ValueClass::kText, left) : Folded(left);
  const std::string b = caseless ? As(ValueClass::kText, right) : Folded(right);
  return "(" + (equality ? a : ByBytes(a)) + " " + std::string(op) + " " + b + ")";
}

TypedSql StrictEmitter::Comparison(std::string_view op, const TypedSql& left, const TypedSql& right, size_t) const {
  const auto written = [&](const std::string& a, const std::string& b) {
    return Finished({left, right}, "(" + a + " " + std::string(op) + " " + b + ")", ValueClass::kBoolean);
  };
  const auto either = [&](ValueClass cls) { return left.cls == cls || right.cls == cls; };
  if (either(ValueClass::kNull)) return written(left.sql, right.sql);
  if (either(ValueClass::kDate)) return written(As(ValueClass::kDate, left), As(ValueClass::kDate, right));
  if (!IsTextual(left.cls) && !IsTextual(right.cls)) return written(left.sql, right.sql);
  // A text beside a constant number is compared with the digits, so that an index on it serves.
  const bool texts = IsTextual(left.cls) && IsTextual(right.cls);
  const TypedSql& number = IsTextual(left.cls) ? right : left;
  const bool digits = number.constant.has_value() && number.cls == ValueClass::kInteger;
  if (texts || digits) return Finished({left, right}, CompareTexts(op, left, right), ValueClass::kBoolean);
  return written(As(ValueClass::kReal, left), As(ValueClass::kReal, right));
}

TypedSql StrictEmitter::Between(const std::vector<TypedSql>& parts, size_t offset) const {
  const TypedSql low = Comparison(">=", parts[0], parts[1], offset);
  const TypedSql high = Comparison("<=", parts[0], parts[2], offset);
  return Finished(parts, "(" + low.sql + " AND " + high.sql + ")", ValueClass::kBoolean);
}

TypedSql StrictEmitter::In(const TypedSql& value, const std::vector<TypedSql>& items, size_t) const {
  const bool text = IsTextual(value.cls);
  const bool caseless = std::all_of(items.begin(), items.end(), IsCaseless);
  std::vector<TypedSql> parts = {value};
  std::string list;
  for (const TypedSql& item : items) {
    std::string sql = item.sql;
    if (text) {
      sql = caseless ? As(ValueClass::kText, item) : Folded(item);
    } else if (value.cls == ValueClass::kDate || IsTextual(item.cls)) {
      sql = As(value.cls == ValueClass::kDate ? value.cls : ValueClass::kReal, item);
    }
    list.append(list.empty() ? "" : ", ").append(sql);
    TypedSql part = item;
    part.sql.clear();
    parts.push_back(std::move(part));
  }
  const std::string subject = !text ? value.sql : caseless ? As(ValueClass::kText, value) : Folded(value);
  return Finished(parts, "(" + subject + " IN (" + list + "))", ValueClass::kBoolean);
}

TypedSql StrictEmitter::InQuery(const TypedSql& value, const std::string& query, ValueClass cls, size_t) const {
  const ValueClass common = Common(value.cls, cls);
  TypedSql column;
  column.sql = "q.c0";
  column.cls = cls;
  const bool text = common == ValueClass::kText;
  const std::string subject = text ? Folded(value) : As(common, value);
  const std::string found = text ? Folded(column) : As(common, column);
  TypedSql result =
      Finished({value}, "(" + subject + " IN (SELECT " + found + " FROM (" + query + ") AS q))", ValueClass::kBoolean);
  result.sources = SourceSet::Many();
  return result;
}

TypedSql StrictEmitter::Aggregate(const AggregateCall& call, const TypedSql& value) const {
  const bool sums = call.name == "sum" || call.name == "avg";
  const char* distinct = call.distinct ? "DISTINCT " : "";
  TypedSql result;
  result.sources = value.sources;
  if (call.name == "count") {
    result.cls = ValueClass::kInteger;
    result.sql = "count(" + std::string(distinct) + value.sql + ")";
    return result;
  }
  if (!sums) {
    result.cls = IsTextual(value.cls) ? ValueClass::kText : value.cls;
    const std::string sql = As(result.cls, value);
    result.sql = std::string(call.name) + "(" + (result.cls == ValueClass::kText ? ByBytes(sql) : sql) + ")";
    return result;
  }
  result.cls = value.cls == ValueClass::kMoney                           ? ValueClass::kMoney
               : value.cls == ValueClass::kInteger && call.name == "sum" ? ValueClass::kInteger
                                                                         : ValueClass::kReal;
  const std::string sql = value.cls == ValueClass::kInteger ? value.sql : As(result.cls, value);
  result.sql = SumOf(call, sql, result.cls);
  return result;
}

// $1t and its kin; see FunctionTemplate.
std::string StrictEmitter::Fill(std::string_view form, const std::vector<TypedSql>& arguments) const {
  std::string sql;
  for (size_t at = 0; at < form.size(); ++at) {
    if (form[at] != '$') {
      sql += form[at];
      continue;
    }
    const TypedSql& argument = arguments[static_cast<size_t>(form[at + 1] - '1')];
    switch (at += 2; form[at]) {
      case 't':
        sql += As(ValueClass::kText, argument);
        break;
      case 'i':
        sql += As(ValueClass::kInteger, argument);
        break;
      case 'n':
        sql += argument.constant ? As(ValueClass::kInteger, argument)
                                 : "CAST(" + As(ValueClass::kInteger, argument) + " AS int)";
        break;
      case 'r':
        sql += As(ValueClass::kReal, argument);
        break;
      case 'm':
        sql += As(ValueClass::kMoney, argument);
        break;
      case 'd':
        sql += As(ValueClass::kDate, argument);
        break;
      default:  // 's': a number as it is
        sql += IsNumeric(argument.cls) ? argument.sql : As(ValueClass::kReal, argument);
    }
  }
  return sql;
}

std::string StrictEmitter::FillNamed(std::string_view name, const std::vector<TypedSql>& arguments) const {
  for (const FunctionTemplate& form : Templates()) {
    if (form.function == name && form.arguments == arguments.size()) return Fill(form.text, arguments);
  }
  return {};
}

std::string StrictEmitter::Concat(const std::vector<TypedSql>& arguments) const {
  std::string sql;
  for (const TypedSql& argument : arguments) {
    const std::string text = As(ValueClass::kText, argument);
    const bool known = argument.constant && !argument.constant->IsNull();
    if (!sql.empty()) sql.append(" ").append(ConcatOperator()).append(" ");
    sql += known ? text : "coalesce(" + text + ", " + TextLiteral("") + ")";
  }
  return "(" + sql + ")";
}

std::string StrictEmitter::Sum(std::string_view function, const std::vector<TypedSql>& arguments,
                               ValueClass& cls) const {
  const TypedSql& left = arguments[0];
  const TypedSql& right = arguments[1];
  const bool plus = function != "sb_minus";
  const bool text = function == "sb_plus_server" ? IsTextual(left.cls) || IsTextual(right.cls)
                                                 : plus && IsTextual(left.cls) && IsTextual(right.cls);
  if (text) {
    cls = ValueClass::kText;
    return "(" + As(cls, left) + " " + std::string(ConcatOperator()) + " " + As(cls, right) + ")";
  }
  const bool left_date = left.cls == ValueClass::kDate;
  const bool right_date = right.cls == ValueClass::kDate;
  if (left_date && right_date && !plus) {
    cls = ValueClass::kReal;
    return FillNamed("days_between", arguments);
  }
  if (left_date || right_date) {
    cls = ValueClass::kDate;
    if (left_date) return FillNamed(plus ? "add_days" : "subtract_days", arguments);
    return FillNamed("add_days", {right, left});
  }
  cls = CountedIn(left.cls, right.cls);
  return "(" + As(cls, left) + (plus ? " + " : " - ") + As(cls, right) + ")";
}

// Empty for what is no arithmetic.
std::string StrictEmitter::Arithmetic(std::string_view function, const std::vector<TypedSql>& arguments,
                                      ValueClass& cls) const {
  if (function == "sb_plus" || function == "sb_plus_server" || function == "sb_minus")
    return Sum(function, arguments, cls);
  if (function == "sb_negate" || function == "sb_negate_money") {
    cls = IsNumeric(arguments[0].cls) ? arguments[0].cls : ValueClass::kReal;
    return "(-" + As(cls, arguments[0]) + ")";
  }
  const auto both = [&](const char* op) { return "(" + As(cls, arguments[0]) + op + As(cls, arguments[1]) + ")"; };
  if (function == "sb_multiply") {
    cls = CountedIn(arguments[0].cls, arguments[1].cls);
    return cls == ValueClass::kMoney ? FillNamed("multiply_money", arguments) : both(" * ");
  }
  if (function == "sb_divide" || function == "sb_divide_server") {
    const bool wholes = arguments[0].cls == ValueClass::kInteger && arguments[1].cls == ValueClass::kInteger;
    cls = wholes && function == "sb_divide_server" ? ValueClass::kInteger : ValueClass::kReal;
    return both(" / ");
  }
  if (function != "sb_divide_whole" && function != "sb_modulo" && function != "sb_bit_and") return {};
  cls = ValueClass::kInteger;
  return both(function == "sb_divide_whole" ? " / " : function == "sb_modulo" ? " % " : " & ");
}

// What depends on constants. Empty where there are no words.
std::string StrictEmitter::Special(std::string_view function, const std::vector<TypedSql>& arguments,
                                   size_t offset) const {
  if (function == "sb_like" || function == "sb_like_server") {
    const std::string* pattern = ConstantText(arguments[1]);
    if (pattern == nullptr) throw Refusal(offset, "这个数据库的 LIKE 只能使用常量的样式");
    return Like(arguments[0], *pattern, function == "sb_like" ? Wildcards::kDesktop : Wildcards::kServer);
  }
  if (function == "sb_concat") return Concat(arguments);
  if (function == "sb_format") {
    if (arguments.size() < 2) return As(ValueClass::kText, arguments[0]);
    const std::string* pattern = ConstantText(arguments[1]);
    return pattern == nullptr ? std::string() : Format(arguments[0], base::AsciiLower(*pattern));
  }
  if (function == "sb_to_text") {
    return ToText(arguments[0],
                  {ConstantWhole(arguments[1]), ConstantWhole(arguments[2]) != 0, ConstantWhole(arguments[3])});
  }
  return {};
}

TypedSql StrictEmitter::Call(std::string_view function, const std::vector<TypedSql>& arguments, ValueClass cls,
                             size_t offset) const {
  ValueClass given = cls;
  std::string sql = Special(function, arguments, offset);
  if (sql.empty()) sql = Arithmetic(function, arguments, given);
  if (sql.empty()) sql = FillNamed(function, arguments);
  if (sql.empty()) throw Refusal(offset, "这个数据库没有与此相应的函数（" + std::string(function.substr(3)) + "）");
  if (given == ValueClass::kAny) given = IsNumeric(arguments[0].cls) ? arguments[0].cls : ValueClass::kReal;
  return Finished(arguments, std::move(sql), given);
}

}  // namespace stockbook::databases
