// SPDX-License-Identifier: MIT
#include "databases/dialect/call_translator.h"

#include <algorithm>
#include <array>
#include <initializer_list>

#include "base/text.h"
#include "databases/dialect/refusal.h"
#include "databases/dialect/sql_composer.h"

namespace stockbook::databases {
namespace {

enum class Speakers { kDesktop, kServer, kBoth };
enum class Gives { kText, kInteger, kReal, kMoney, kDate, kSame };

// One function of the dialects: its lower-case name there, the room's function, how many arguments, and what it gives.
struct FunctionRule {
  std::string_view name;
  std::string_view function;
  size_t least;
  size_t most;
  Gives gives;
  Speakers speakers;
};

constexpr std::array<FunctionRule, 53> kRules = {{
    {"left", "sb_left", 2, 2, Gives::kText, Speakers::kBoth},
    {"right", "sb_right", 2, 2, Gives::kText, Speakers::kBoth},
    {"mid", "sb_mid", 2, 3, Gives::kText, Speakers::kDesktop},
    {"substring", "sb_mid", 3, 3, Gives::kText, Speakers::kServer},
    {"len", "sb_len", 1, 1, Gives::kInteger, Speakers::kDesktop},
    {"len", "sb_len_server", 1, 1, Gives::kInteger, Speakers::kServer},
    {"trim", "sb_trim", 1, 1, Gives::kText, Speakers::kBoth},
    {"ltrim", "sb_ltrim", 1, 1, Gives::kText, Speakers::kBoth},
    {"rtrim", "sb_rtrim", 1, 1, Gives::kText, Speakers::kBoth},
    {"ucase", "sb_ucase", 1, 1, Gives::kText, Speakers::kDesktop},
    {"lcase", "sb_lcase", 1, 1, Gives::kText, Speakers::kDesktop},
    {"upper", "sb_ucase", 1, 1, Gives::kText, Speakers::kServer},
    {"lower", "sb_lcase", 1, 1, Gives::kText, Speakers::kServer},
    {"instr", "sb_instr", 2, 3, Gives::kInteger, Speakers::kDesktop},
    {"charindex", "sb_charindex", 2, 3, Gives::kInteger, Speakers::kServer},
    {"replace", "sb_replace", 3, 3, Gives::kText, Speakers::kBoth},
    {"space", "sb_space", 1, 1, Gives::kText, Speakers::kBoth},
    {"format", "sb_format", 1, 2, Gives::kText, Speakers::kDesktop},
    {"cdate", "sb_to_date", 1, 1, Gives::kDate, Speakers::kDesktop},
    {"cvdate", "sb_to_date", 1, 1, Gives::kDate, Speakers::kDesktop},
    {"datevalue", "sb_to_date", 1, 1, Gives::kDate, Speakers::kDesktop},
    {"cstr", "sb_text", 1, 1, Gives::kText, Speakers::kDesktop},
    {"cint", "sb_to_integer", 1, 1, Gives::kInteger, Speakers::kDesktop},
    {"clng", "sb_to_integer", 1, 1, Gives::kInteger, Speakers::kDesktop},
    {"cdbl", "sb_to_real", 1, 1, Gives::kReal, Speakers::kDesktop},
    {"csng", "sb_to_real", 1, 1, Gives::kReal, Speakers::kDesktop},
    {"ccur", "sb_to_money", 1, 1, Gives::kMoney, Speakers::kDesktop},
    {"val", "sb_val", 1, 1, Gives::kReal, Speakers::kDesktop},
    {"isnumeric", "sb_is_numeric", 1, 1, Gives::kInteger, Speakers::kDesktop},
    {"abs", "sb_abs", 1, 1, Gives::kSame, Speakers::kBoth},
    {"round", "sb_round", 1, 2, Gives::kSame, Speakers::kDesktop},
    {"round", "sb_round_server", 1, 2, Gives::kSame, Speakers::kServer},
    {"int", "sb_floor", 1, 1, Gives::kSame, Speakers::kDesktop},
    {"fix", "sb_fix", 1, 1, Gives::kSame, Speakers::kDesktop},
    {"floor", "sb_floor", 1, 1, Gives::kSame, Speakers::kServer},
    {"ceiling", "sb_ceiling", 1, 1, Gives::kSame, Speakers::kServer},
    {"sgn", "sb_sign", 1, 1, Gives::kInteger, Speakers::kDesktop},
    {"sign", "sb_sign", 1, 1, Gives::kInteger, Speakers::kServer},
    {"sqr", "sb_sqrt", 1, 1, Gives::kReal, Speakers::kDesktop},
    {"sqrt", "sb_sqrt", 1, 1, Gives::kReal, Speakers::kServer},
    {"year", "sb_year", 1, 1, Gives::kInteger, Speakers::kBoth},
    {"month", "sb_month", 1, 1, Gives::kInteger, Speakers::kBoth},
    {"day", "sb_day", 1, 1, Gives::kInteger, Speakers::kBoth},
    {"hour", "sb_hour", 1, 1, Gives::kInteger, Speakers::kDesktop},
    {"minute", "sb_minute", 1, 1, Gives::kInteger, Speakers::kDesktop},
    {"second", "sb_second", 1, 1, Gives::kInteger, Speakers::kDesktop},
    {"dateserial", "sb_date_serial", 3, 3, Gives::kDate, Speakers::kDesktop},
    {"date", "sb_today", 0, 0, Gives::kDate, Speakers::kDesktop},
    {"now", "sb_now", 0, 0, Gives::kDate, Speakers::kDesktop},
    {"getdate", "sb_now", 0, 0, Gives::kDate, Speakers::kServer},
    {"str", "sb_text", 1, 1, Gives::kText, Speakers::kServer},
    {"isnull", "sb_is_null", 1, 1, Gives::kInteger, Speakers::kDesktop},
    {"power", "sb_power", 2, 2, Gives::kReal, Speakers::kServer},
}};

bool Speaks(Speakers speakers, Dialect dialect) {
  return speakers == Speakers::kBoth || (speakers == Speakers::kServer) == (dialect == Dialect::kServer);
}

ValueClass ClassGiven(Gives gives, const std::vector<TypedSql>& arguments) {
  switch (gives) {
    case Gives::kText:
      return ValueClass::kText;
    case Gives::kInteger:
      return ValueClass::kInteger;
    case Gives::kReal:
      return ValueClass::kReal;
    case Gives::kMoney:
      return ValueClass::kMoney;
    case Gives::kDate:
      return ValueClass::kDate;
    case Gives::kSame:
      break;
  }
  return arguments[0].cls == ValueClass::kMoney || arguments[0].cls == ValueClass::kInteger ? arguments[0].cls
                                                                                            : ValueClass::kAny;
}

bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

}  // namespace

void CallTranslator::CheckCount(const Expr& expr, size_t least, size_t most) {
  const size_t count = expr.operands.size();
  if (count < least || count > most) {
    const std::string wanted =
        least == most ? std::to_string(least) : std::to_string(least) + " 至 " + std::to_string(most);
    throw Refusal(expr.offset,
                  "函数“" + expr.text + "”的参数应为 " + wanted + " 个，这里有 " + std::to_string(count) + " 个");
  }
}

TypedSql CallTranslator::Number(int64_t number) {
  TypedSql result;
  result.sql = std::to_string(number);
  result.cls = ValueClass::kInteger;
  result.constant = base::Value(number);
  return result;
}

TypedSql CallTranslator::Translate(const Expr& expr) {
  if (expr.kind == ExprKind::kCast) return Cast(expr);
  const std::string name = base::AsciiLower(expr.text);
  if (IsOneOf(name, {"sum", "avg", "count", "min", "max"})) return Aggregate(expr, name);
  if (expr.distinct) throw Refusal(expr.offset, "DISTINCT 只能用于聚合函数");
  const bool server = expressions_.dialect() == Dialect::kServer;
  if (name == "iif") return Choice(expr);
  if (!server && name == "nz") return ZeroIfNull(expr);
  if (server && name == "nullif") return NullIf(expr);
  if (server && (name == "isnull" || name == "coalesce")) {
    constexpr size_t kMostAlternatives = 100;
    CheckCount(expr, 2, name == "isnull" ? 2 : kMostAlternatives);
    return FirstKnown(expressions_.TranslateValues(expr.operands));
  }
  return Function(expr);
}

TypedSql CallTranslator::Function(const Expr& expr) {
  const std::string name = base::AsciiLower(expr.text);
  const auto rule = std::find_if(kRules.begin(), kRules.end(), [&](const FunctionRule& candidate) {
    return candidate.name == name && Speaks(candidate.speakers, expressions_.dialect());
  });
  if (rule == kRules.end()) throw Refusal(expr.offset, "不认识的函数“" + expr.text + "”");
  CheckCount(expr, rule->least, rule->most);
  const std::vector<TypedSql> arguments = expressions_.TranslateValues(expr.operands);
  return emitter().Call(rule->function, arguments, ClassGiven(rule->gives, arguments), expr.offset);
}

TypedSql CallTranslator::Aggregate(const Expr& expr, const std::string& name) {
  expressions_.CheckAggregate(expr);
  if (expr.distinct && expressions_.dialect() == Dialect::kDesktop)
    throw Refusal(expr.offset, "桌面方言的聚合函数没有 DISTINCT");
  CheckCount(expr, 1, 1);
  TypedSql result;
  if (name == "count" && expr.operands[0]->kind == ExprKind::kStar) {
    result.sql = "count(*)";
    result.cls = ValueClass::kInteger;
  } else {
    const TypedSql value = emitter().Canonical(expressions_.TranslateAggregated(*expr.operands[0]));
    result = emitter().Aggregate({name, expr.distinct, expr.offset}, value);
  }
  result.has_aggregate = true;
  return result;
}

// IIf(condition, a, b)
TypedSql CallTranslator::Choice(const Expr& expr) {
  CheckCount(expr, 3, 3);
  const TypedSql condition = expressions_.TranslateCondition(*expr.operands[0]);
  const TypedSql yes = expressions_.TranslateValue(*expr.operands[1]);
  const TypedSql no = expressions_.TranslateValue(*expr.operands[2]);
  const ValueClass cls = emitter().Common(yes.cls, no.cls);
  TypedSql result = Gathered({condition, yes, no});
  result.sql = "(CASE WHEN " + condition.sql + " THEN " + emitter().ConvertTo(yes, cls).sql + " ELSE " +
               emitter().ConvertTo(no, cls).sql + " END)";
  result.cls = cls;
  result.form = ResultFormOf(cls);
  return result;
}

TypedSql CallTranslator::FirstKnown(const std::vector<TypedSql>& values) {
  ValueClass cls = ValueClass::kNull;
  for (const TypedSql& value : values) cls = emitter().Common(cls, value.cls);
  TypedSql result = Gathered(values);
  result.sql = "coalesce(";
  for (const TypedSql& value : values) {
    if (&value != &values.front()) result.sql += ", ";
    result.sql += emitter().ConvertTo(value, cls).sql;
  }
  result.sql += ")";
  result.cls = cls;
  result.form = ResultFormOf(cls);
  return result;
}

// Nz(a) is 0 for a number and "" for anything else.
TypedSql CallTranslator::ZeroIfNull(const Expr& expr) {
  CheckCount(expr, 1, 2);
  std::vector<TypedSql> values = expressions_.TranslateValues(expr.operands);
  if (values.size() == 1) {
    TypedSql neutral = Number(0);
    if (!IsNumeric(values[0].cls)) {
      neutral.sql = emitter().Literal("", ValueClass::kText);
      neutral.cls = ValueClass::kText;
      neutral.constant = base::Value(std::string());
    }
    values.push_back(std::move(neutral));
  }
  return FirstKnown(values);
}

TypedSql CallTranslator::NullIf(const Expr& expr) {
  CheckCount(expr, 2, 2);
  const std::vector<TypedSql> values = expressions_.TranslateValues(expr.operands);
  if (values[0].sql.size() > kMostWritten) throw Refusal(expr.offset, "NULLIF 展开后太长，请分成几部分");
  const TypedSql same = emitter().Comparison("=", values[0], values[1], expr.offset);
  TypedSql result = Gathered(values);
  const TypedSql value = emitter().Canonical(values[0]);
  result.sql = "(CASE WHEN " + same.sql + " THEN NULL ELSE " + value.sql + " END)";
  result.cls = value.cls;
  result.form = ResultFormOf(value.cls);
  return result;
}

TypedSql CallTranslator::CastToText(const Expr& expr, const TypedSql& value, Padding padding) {
  static constexpr std::array<int64_t, 16> kStyles = {0,   8,   20,  21,  23,  25,  100, 102,
                                                      108, 111, 112, 120, 121, 126, 1,   2};
  constexpr int64_t kDefaultLength = 30;
  int64_t style = 0;
  if (expr.operands.size() > 1) {
    const Expr& style_expr = *expr.operands[1];
    const TypedSql given = expressions_.TranslateValue(style_expr);
    const auto* number = given.constant ? given.constant->As<int64_t>() : nullptr;
    if (number == nullptr || std::find(kStyles.begin(), kStyles.end(), *number) == kStyles.end()) {
      throw Refusal(style_expr.offset, "不支持 Convert 的这种样式，可用 23、112、120、121 等");
    }
    style = *number;
  }
  const int64_t length = expr.type_length ? static_cast<int64_t>(*expr.type_length) : kDefaultLength;
  return emitter().Call("sb_to_text",
                        {value, Number(length), Number(padding == Padding::kBlanks ? 1 : 0), Number(style)},
                        ValueClass::kText, expr.offset);
}

TypedSql CallTranslator::Cast(const Expr& expr) {
  const std::string& type = expr.type_name;
  const TypedSql value = expressions_.TranslateValue(*expr.operands[0]);
  const auto call = [&](const char* function, ValueClass cls) {
    return emitter().Call(function, {value}, cls, expr.offset);
  };
  if (IsOneOf(type, {"char", "nchar"})) return CastToText(expr, value, Padding::kBlanks);
  if (IsOneOf(type, {"varchar", "nvarchar", "text", "ntext"})) return CastToText(expr, value, Padding::kNone);
  if (IsOneOf(type, {"int", "integer", "bigint", "smallint", "tinyint"}))
    return call("sb_to_integer_server", ValueClass::kInteger);
  if (type == "bit") return call("sb_truth", ValueClass::kInteger);
  if (IsOneOf(type, {"float", "real"})) return call("sb_to_real", ValueClass::kReal);
  if (IsOneOf(type, {"money", "smallmoney"})) return call("sb_to_money", ValueClass::kMoney);
  if (IsOneOf(type, {"decimal", "numeric"})) {
    const auto places = Number(expr.type_scale);
    if (expr.type_scale > base::Money::kDecimals)
      return emitter().Call("sb_round_server", {call("sb_to_real", ValueClass::kReal), places}, ValueClass::kReal,
                            expr.offset);
    return emitter().Call("sb_round_server", {call("sb_to_money", ValueClass::kMoney), places}, ValueClass::kMoney,
                          expr.offset);
  }
  if (IsOneOf(type, {"datetime", "smalldatetime", "datetime2"})) return call("sb_to_date", ValueClass::kDate);
  if (type == "date") return call("sb_to_day", ValueClass::kDate);
  throw Refusal(expr.offset, "不认识的类型“" + type + "”");
}

}  // namespace stockbook::databases
