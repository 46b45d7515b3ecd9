// SPDX-License-Identifier: MIT
#include "databases/dialect/expression_translator.h"

#include <algorithm>

#include "base/number.h"
#include "databases/dialect/call_translator.h"
#include "databases/dialect/refusal.h"
#include "databases/dialect/sql_composer.h"

namespace stockbook::databases {
namespace {

// The subject of a CASE, for one, is written several times; nesting must not make a statement grow without bound.
constexpr size_t kMostSqlBytes = size_t{16} << 20;

ValueClass SumClass(std::string_view op, ValueClass left, ValueClass right, Dialect dialect) {
  const auto either = [&](ValueClass cls) { return left == cls || right == cls; };
  if (either(ValueClass::kText) && op == "+" && (dialect == Dialect::kServer || left == right))
    return ValueClass::kText;
  if (either(ValueClass::kMoney)) return ValueClass::kMoney;
  if (either(ValueClass::kText)) return ValueClass::kAny;
  if (either(ValueClass::kDate)) return left == right && op == "-" ? ValueClass::kReal : ValueClass::kDate;
  if (left == ValueClass::kInteger && right == ValueClass::kInteger) return ValueClass::kInteger;
  if (either(ValueClass::kReal) && IsNumeric(left) && IsNumeric(right)) return ValueClass::kReal;
  return ValueClass::kAny;
}

ValueClass ProductClass(ValueClass left, ValueClass right) {
  if (left == ValueClass::kMoney || right == ValueClass::kMoney) return ValueClass::kMoney;
  if (left == ValueClass::kInteger && right == ValueClass::kInteger) return ValueClass::kInteger;
  return IsNumeric(left) && IsNumeric(right) ? ValueClass::kReal : ValueClass::kAny;
}

}  // namespace

TypedSql ExpressionTranslator::Translate(const Expr& expr) {
  TypedSql result = TranslateNode(expr);
  if (groups_ != nullptr && result.ungrouped &&
      std::find(groups_->begin(), groups_->end(), result.sql) != groups_->end()) {
    result.ungrouped.reset();
  }
  if (result.sql.size() > kMostSqlBytes) throw Refusal(expr.offset, "表达式过长");
  return result;
}

TypedSql ExpressionTranslator::TranslateValue(const Expr& expr) {
  TypedSql value = Translate(expr);
  if (value.cls != ValueClass::kBoolean) return value;
  if (dialect() == Dialect::kServer) throw Refusal(expr.offset, "条件不能当作值使用，请用 CASE");
  return emitter().NumberOf(std::move(value));
}

TypedSql ExpressionTranslator::TranslateCondition(const Expr& expr) {
  TypedSql value = Translate(expr);
  if (value.cls == ValueClass::kBoolean) return value;
  if (dialect() == Dialect::kServer) throw Refusal(expr.offset, "此处应为条件，例如比较");
  return emitter().Truth(value, expr.offset);
}

TypedSql ExpressionTranslator::TranslateNode(const Expr& expr) {
  switch (expr.kind) {
    case ExprKind::kNull:
    case ExprKind::kBoolean:
    case ExprKind::kInteger:
    case ExprKind::kDecimal:
    case ExprKind::kText:
    case ExprKind::kDate:
      return Literal(expr);
    case ExprKind::kColumn:
      return Column(expr);
    case ExprKind::kStar:
      throw Refusal(expr.offset, "“*”只能用于 SELECT 列表和 Count(*)");
    case ExprKind::kUnary:
      return Unary(expr);
    case ExprKind::kBinary:
      return Binary(expr);
    case ExprKind::kConcat:
      return Concat(expr);
    case ExprKind::kIsNull:
      return IsNull(expr);
    case ExprKind::kBetween:
      return Between(expr);
    case ExprKind::kIn:
      return In(expr);
    case ExprKind::kLike:
      return Like(expr);
    case ExprKind::kCase:
      return Case(expr);
    case ExprKind::kCall:
    case ExprKind::kCast:
      return CallTranslator(*this).Translate(expr);
    case ExprKind::kSubquery:
    case ExprKind::kExists:
      return Subquery(expr);
  }
  throw Refusal(expr.offset, "不支持的表达式");
}

TypedSql ExpressionTranslator::Literal(const Expr& expr) const {
  TypedSql result;
  switch (expr.kind) {
    case ExprKind::kNull:
      result.cls = ValueClass::kNull;
      result.constant = base::Value();
      break;
    case ExprKind::kText:
      result.cls = ValueClass::kText;
      result.constant = base::Value(expr.text);
      break;
    case ExprKind::kDate:
      result.cls = ValueClass::kDate;
      result.form = Form::kDateText;
      result.constant = base::Value(base::Date::Parse(expr.text).value_or(base::Date()));
      break;
    case ExprKind::kDecimal:
      result.cls = ValueClass::kReal;
      result.constant = base::Value(base::ParseNumber(expr.text).value_or(0));
      break;
    default:
      result.cls = ValueClass::kInteger;
      result.constant = base::Value(base::ParseInteger(expr.text).value_or(0));
      break;
  }
  result.sql = emitter().Literal(expr.text, result.cls);
  return result;
}

TypedSql ExpressionTranslator::Column(const Expr& expr) const {
  const BoundColumn& column = scope_.Find(expr.qualifier, expr.text, expr.offset);
  TypedSql result;
  result.sql = column.sql;
  result.cls = column.cls;
  result.form = column.form;
  result.sources.Add(column.source);
  result.column = &column;
  if (!in_aggregate_) result.ungrouped = expr.offset;
  return result;
}

TypedSql ExpressionTranslator::Unary(const Expr& expr) {
  const Expr& operand = *expr.operands[0];
  if (expr.text == "NOT") return Not(TranslateCondition(operand));
  TypedSql value = TranslateValue(operand);
  if (expr.text == "+") {
    value.column = nullptr;
    return value;
  }
  if (value.constant && (value.cls == ValueClass::kInteger || value.cls == ValueClass::kReal)) {
    value.sql = value.sql.front() == '-' ? value.sql.substr(1) : "-" + value.sql;
    const auto* whole = value.constant->As<int64_t>();
    value.constant = whole != nullptr ? base::Value(-*whole) : base::Value(-*value.constant->As<double>());
    return value;
  }
  const bool keeps =
      value.cls == ValueClass::kMoney || value.cls == ValueClass::kInteger || value.cls == ValueClass::kReal;
  const char* function = value.cls == ValueClass::kMoney ? "sb_negate_money" : "sb_negate";
  TypedSql result = emitter().Call(function, {value}, keeps ? value.cls : ValueClass::kAny, expr.offset);
  result.negated = value.column;
  return result;
}

TypedSql ExpressionTranslator::Binary(const Expr& expr) {
  const std::string& op = expr.text;
  if (op == "AND" || op == "OR") {
    const TypedSql left = TranslateCondition(*expr.operands[0]);
    const TypedSql right = TranslateCondition(*expr.operands[1]);
    TypedSql result = Gathered({left, right});
    result.sql.append("(").append(left.sql).append(" ").append(op).append(" ").append(right.sql).append(")");
    result.cls = ValueClass::kBoolean;
    return result;
  }
  if (op == "&") return BitAnd(expr);
  static constexpr std::string_view kComparisons = "= <> <= >= < >";
  if (kComparisons.find(op) != std::string_view::npos) {
    return emitter().Comparison(op, TranslateValue(*expr.operands[0]), TranslateValue(*expr.operands[1]), expr.offset);
  }
  return Arithmetic(expr);
}

TypedSql ExpressionTranslator::Arithmetic(const Expr& expr) {
  const std::vector<TypedSql> sides = TranslateValues(expr.operands);
  const bool server = dialect() == Dialect::kServer;
  const ValueClass left = sides[0].cls;
  const ValueClass right = sides[1].cls;
  const std::string& op = expr.text;
  const auto call = [&](const char* function, ValueClass cls) {
    return emitter().Call(function, sides, cls, expr.offset);
  };
  if (op == "+") return call(server ? "sb_plus_server" : "sb_plus", SumClass(op, left, right, dialect()));
  if (op == "-") return call("sb_minus", SumClass(op, left, right, dialect()));
  if (op == "*") return call("sb_multiply", ProductClass(left, right));
  if (op == "/") return call(server ? "sb_divide_server" : "sb_divide", server ? ValueClass::kAny : ValueClass::kReal);
  if (op == "\\") return call("sb_divide_whole", ValueClass::kInteger);
  if (op == "MOD" || op == "%") return call("sb_modulo", ValueClass::kInteger);
  if (op == "^") return call("sb_power", ValueClass::kReal);
  throw Refusal(expr.offset, "不支持运算符“" + op + "”");
}

// In the server dialect & is the bitwise and, which does not apply to texts and dates.
TypedSql ExpressionTranslator::BitAnd(const Expr& expr) {
  const std::vector<TypedSql> sides = TranslateValues(expr.operands);
  const bool text =
      std::any_of(sides.begin(), sides.end(), [](const TypedSql& side) { return side.cls == ValueClass::kText; });
  if (text && target_.ampersand == Ampersand::kJoinsTexts)
    return emitter().Call("sb_concat", sides, ValueClass::kText, expr.offset);
  for (const TypedSql& side : sides) {
    if (side.cls == ValueClass::kText) {
      throw Refusal(expr.offset, "Invalid operator for data type. Operator equals boolean AND, type equals varchar.");
    }
    if (side.cls == ValueClass::kDate) {
      throw Refusal(expr.offset, "Invalid operator for data type. Operator equals boolean AND, type equals datetime.");
    }
  }
  return emitter().Call("sb_bit_and", sides, ValueClass::kInteger, expr.offset);
}

TypedSql ExpressionTranslator::Concat(const Expr& expr) {
  return emitter().Call("sb_concat", TranslateValues(expr.operands), ValueClass::kText, expr.offset);
}

TypedSql ExpressionTranslator::IsNull(const Expr& expr) {
  // A money or date column that holds something else reads as null, as it does everywhere.
  const TypedSql value = emitter().Canonical(TranslateValue(*expr.operands[0]));
  TypedSql result = Gathered({value});
  result.sql = "(" + value.sql + (expr.negated ? " IS NOT NULL)" : " IS NULL)");
  result.cls = ValueClass::kBoolean;
  return result;
}

TypedSql ExpressionTranslator::Between(const Expr& expr) {
  TypedSql result = emitter().Between(TranslateValues(expr.operands), expr.offset);
  return expr.negated ? Not(std::move(result)) : result;
}

TypedSql ExpressionTranslator::In(const Expr& expr) {
  std::vector<TypedSql> items = TranslateValues(expr.operands);
  const TypedSql value = std::move(items.front());
  items.erase(items.begin());
  TypedSql result;
  if (expr.query != nullptr) {
    const SubquerySql query = translate_query_(*expr.query, scope_);
    if (query.classes.size() != 1) throw Refusal(expr.offset, "IN 的子查询只能有一个字段");
    result = emitter().InQuery(value, query.sql, query.classes[0], expr.offset);
  } else {
    result = emitter().In(value, items, expr.offset);
  }
  return expr.negated ? Not(std::move(result)) : result;
}

TypedSql ExpressionTranslator::Like(const Expr& expr) {
  const char* function = dialect() == Dialect::kServer ? "sb_like_server" : "sb_like";
  TypedSql result = emitter().Call(function, TranslateValues(expr.operands), ValueClass::kBoolean, expr.offset);
  return expr.negated ? Not(std::move(result)) : result;
}

TypedSql ExpressionTranslator::Case(const Expr& expr) {
  size_t index = expr.has_subject ? 1 : 0;
  const size_t end = expr.operands.size() - (expr.has_else ? 1 : 0);
  std::vector<TypedSql> conditions;
  std::vector<TypedSql> values;
  TypedSql subject;
  if (expr.has_subject) subject = TranslateValue(*expr.operands[0]);
  size_t written = 0;
  for (; index < end; index += 2) {
    // The subject stands in every branch; cases as subjects of cases double what is written with each.
    written += subject.sql.size();
    if (written > kMostWritten) throw Refusal(expr.offset, "CASE 展开后太长，请分成几部分");
    const Expr& when = *expr.operands[index];
    conditions.push_back(expr.has_subject ? emitter().Comparison("=", subject, TranslateValue(when), when.offset)
                                          : TranslateCondition(when));
    values.push_back(TranslateValue(*expr.operands[index + 1]));
  }
  if (expr.has_else) values.push_back(TranslateValue(*expr.operands.back()));
  ValueClass cls = ValueClass::kNull;
  for (const TypedSql& value : values) cls = emitter().Common(cls, value.cls);
  std::vector<TypedSql> all = conditions;
  all.insert(all.end(), values.begin(), values.end());
  TypedSql result = Gathered(all);
  result.sql = "(CASE";
  for (size_t branch = 0; branch < conditions.size(); ++branch) {
    result.sql.append(" WHEN ")
        .append(conditions[branch].sql)
        .append(" THEN ")
        .append(emitter().ConvertTo(values[branch], cls).sql);
  }
  if (expr.has_else) result.sql.append(" ELSE ").append(emitter().ConvertTo(values.back(), cls).sql);
  result.sql += " END)";
  result.cls = cls;
  result.form = ResultFormOf(cls);
  return result;
}

TypedSql ExpressionTranslator::Subquery(const Expr& expr) {
  const SubquerySql query = translate_query_(*expr.query, scope_);
  TypedSql result;
  result.sources = SourceSet::Many();
  if (expr.kind == ExprKind::kExists) {
    result.sql = "EXISTS (" + query.sql + ")";
    result.cls = ValueClass::kBoolean;
    return result;
  }
  if (query.classes.size() != 1) throw Refusal(expr.offset, "作为值的子查询只能有一个字段");
  result.sql = "(" + query.sql + ")";
  result.cls = query.classes[0];
  result.form = ResultFormOf(result.cls);
  return result;
}

std::vector<TypedSql> ExpressionTranslator::TranslateValues(const std::vector<ExprPtr>& operands) {
  std::vector<TypedSql> values;
  values.reserve(operands.size());
  for (const ExprPtr& operand : operands) values.push_back(TranslateValue(*operand));
  return values;
}

void ExpressionTranslator::CheckAggregate(const Expr& aggregate) const {
  if (no_aggregates_in_ != nullptr) {
    throw Refusal(aggregate.offset, std::string(no_aggregates_in_) + " 中不能使用聚合函数“" + aggregate.text + "”");
  }
  if (in_aggregate_) throw Refusal(aggregate.offset, "聚合函数不能嵌套");
}

TypedSql ExpressionTranslator::TranslateAggregated(const Expr& argument) {
  in_aggregate_ = true;
  TypedSql value = TranslateValue(argument);
  in_aggregate_ = false;
  return value;
}

}  // namespace stockbook::databases
