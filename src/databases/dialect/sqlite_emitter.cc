// SPDX-License-Identifier: MIT
#include "databases/dialect/sqlite_emitter.h"

#include <algorithm>
#include <utility>

#include "databases/dialect/sql_composer.h"

namespace stockbook::databases {
namespace {

// True when SQLite itself compares the value as the dialects do.
bool IsPlain(const TypedSql& value) { return value.form == Form::kPlain || value.form == Form::kReal; }

// Whether both may be texts, and differ for SQLite where they are the same for the dialects. Columns of numbers are
// taken to hold numbers, so that SQLite's indexes serve them, and so do constants without letters.
bool NeedsCollation(const TypedSql& left, const TypedSql& right) {
  if (IsCaseless(left) || IsCaseless(right)) return false;
  if (left.cls == ValueClass::kText || right.cls == ValueClass::kText) return true;
  return !IsNumeric(left.cls) && !IsNumeric(right.cls);
}

// The value, to be compared by the room's collation.
std::string Collated(const TypedSql& value) { return value.sql + " COLLATE " + kTextCollation; }

}  // namespace

std::string SqliteEmitter::Literal(std::string_view text, ValueClass cls) const {
  if (cls == ValueClass::kNull) return "NULL";
  return cls == ValueClass::kText || cls == ValueClass::kDate ? QuotedText(text) : std::string(text);
}

TypedSql SqliteEmitter::Function(std::string_view function, const std::vector<TypedSql>& arguments,
                                 ValueClass cls) const {
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

TypedSql SqliteEmitter::Call(std::string_view function, const std::vector<TypedSql>& arguments, ValueClass cls,
                             size_t) const {
  // SQLite allows 127 arguments; longer chains are joined in portions.
  constexpr size_t kMostArguments = 100;
  if (arguments.size() <= kMostArguments) return Function(function, arguments, cls);
  std::vector<TypedSql> parts;
  for (const TypedSql& argument : arguments) {
    if (parts.size() == kMostArguments) {
      TypedSql portion = Function(function, parts, cls);
      parts.clear();
      parts.push_back(std::move(portion));
    }
    parts.push_back(argument);
  }
  return Function(function, parts, cls);
}

TypedSql SqliteEmitter::Canonical(TypedSql value) const {
  if (value.form != Form::kRawMoney && value.form != Form::kRawDate) return value;
  value.sql = std::string("sb_value('") + static_cast<char>(value.form) + "', " + value.sql + ")";
  value.form = ResultFormOf(value.cls);
  return value;
}

TypedSql SqliteEmitter::ConvertTo(TypedSql value, ValueClass cls) const {
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

TypedSql SqliteEmitter::NumberOf(TypedSql condition) const {
  condition.sql = "(-" + condition.sql + ")";
  condition.cls = ValueClass::kInteger;
  return condition;
}

TypedSql SqliteEmitter::Truth(const TypedSql& value, size_t) const {
  return Function("sb_truth", {value}, ValueClass::kBoolean);
}

TypedSql SqliteEmitter::Comparison(std::string_view op, const TypedSql& left, const TypedSql& right, size_t) const {
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
    result = Function("sb_compare", {left, right}, ValueClass::kInteger);
    result.sql.insert(0, "(").append(" ").append(op).append(" 0)");
  }
  result.cls = ValueClass::kBoolean;
  result.form = Form::kPlain;
  return result;
}

TypedSql SqliteEmitter::Between(const std::vector<TypedSql>& parts, size_t) const {
  if (!std::all_of(parts.begin(), parts.end(), IsPlain)) return Function("sb_between", parts, ValueClass::kBoolean);
  TypedSql result = Gathered(parts);
  const bool collated = NeedsCollation(parts[0], parts[1]) || NeedsCollation(parts[0], parts[2]);
  result.sql =
      "(" + (collated ? Collated(parts[0]) : parts[0].sql) + " BETWEEN " + parts[1].sql + " AND " + parts[2].sql + ")";
  result.cls = ValueClass::kBoolean;
  return result;
}

TypedSql SqliteEmitter::In(const TypedSql& value, const std::vector<TypedSql>& items, size_t) const {
  std::vector<TypedSql> parts;
  std::string list;
  const bool decided = value.cls == ValueClass::kMoney || value.cls == ValueClass::kDate;
  bool collated = false;
  for (TypedSql item : items) {
    if (decided && item.cls != value.cls && item.cls != ValueClass::kNull) {
      const auto cls = value.cls;
      item = cls == ValueClass::kMoney ? ConvertTo(std::move(item), cls) : Function("sb_to_date", {item}, cls);
    } else {
      collated = collated || (!decided && !IsNumeric(value.cls) && NeedsCollation(value, item));
      item = Canonical(std::move(item));
    }
    list.append(list.empty() ? "" : ", ").append(item.sql);
    item.sql.clear();
    parts.push_back(std::move(item));
  }
  parts.push_back(value);
  TypedSql result = Gathered(parts);
  result.sql = "(" + (collated ? Collated(value) : Canonical(value).sql) + " IN (" + list + "))";
  result.cls = ValueClass::kBoolean;
  return result;
}

TypedSql SqliteEmitter::InQuery(const TypedSql& value, const std::string& query, ValueClass cls, size_t) const {
  const ValueClass common = Unify(value.cls, cls);
  TypedSql column;
  column.sql = "c0";
  column.cls = cls;
  column.form = ResultFormOf(cls);
  const TypedSql turned = ConvertTo(column, common);
  const TypedSql compared = ConvertTo(value, common);
  const bool collated = IsPlain(compared) && IsPlain(turned) && NeedsCollation(compared, turned);
  TypedSql result = Gathered({value});
  result.sql = "(" + (collated ? Collated(compared) : compared.sql) + " IN (";
  result.sql += turned.sql == column.sql ? query : "SELECT " + turned.sql + " FROM (" + query + ")";
  result.sql += "))";
  result.cls = ValueClass::kBoolean;
  result.sources = SourceSet::Many();
  return result;
}

TypedSql SqliteEmitter::Aggregate(const AggregateCall& call, const TypedSql& argument) const {
  const bool money = argument.cls == ValueClass::kMoney;
  const bool sums = call.name == "sum" || call.name == "avg";
  const bool counts = call.name == "count";
  TypedSql result;
  result.sources = argument.sources;
  result.cls = argument.cls;
  result.sql = argument.sql;
  if (money && !sums && !counts) result.sql = "sb_amount('m', " + argument.sql + ")";
  result.sql = (sums ? "sb_" : "") + std::string(call.name) + (sums && money ? "_money" : "") +
               (call.distinct ? "(DISTINCT " : "(") + result.sql + ")";
  if (counts) {
    result.cls = ValueClass::kInteger;
  } else if (call.name == "avg" && !money) {
    result.cls = ValueClass::kReal;
  } else if (sums && !money && argument.cls != ValueClass::kInteger) {
    result.cls = ValueClass::kAny;
  }
  result.form = ResultFormOf(result.cls);
  return result;
}

std::string SqliteEmitter::OrderKey(const TypedSql& key, size_t place) const {
  return place > 0 ? std::to_string(place) : key.sql;
}

std::string SqliteEmitter::OrderedUnion(std::string sql, const std::vector<UnionKey>& keys) const {
  for (const UnionKey& key : keys) {
    sql += &key == &keys.front() ? " ORDER BY " : ", ";
    sql += std::to_string(key.place) + Direction(key.descending);
  }
  return sql;
}

}  // namespace stockbook::databases
