// SPDX-License-Identifier: MIT
#include "databases/dialect/select_translator.h"

#include <algorithm>

#include "base/number.h"
#include "base/text.h"
#include "databases/dialect/refusal.h"
#include "databases/dialect/select_order.h"
#include "databases/dialect/sql_composer.h"

namespace stockbook::databases {
namespace {

std::string Joined(const std::vector<std::string>& parts, const char* separator) {
  std::string text;
  for (const std::string& part : parts) text.append(text.empty() ? "" : separator).append(part);
  return text;
}

std::vector<std::string> SqlOf(const std::vector<TypedSql>& values) {
  std::vector<std::string> texts;
  for (const TypedSql& value : values) texts.push_back(value.sql);
  return texts;
}

std::vector<ValueClass> ClassesOf(const std::vector<ResultColumn>& columns) {
  std::vector<ValueClass> classes;
  for (const ResultColumn& column : columns) classes.push_back(column.cls);
  return classes;
}

SourceSet SetOf(const Scope& scope, size_t first) {
  SourceSet set;
  for (size_t index = first; index < scope.sources.size(); ++index) set.Add(scope.sources[index].id);
  return set;
}

}  // namespace

SelectTranslator::SelectTranslator(const Target& target, const TableFinder& find_table)
    : target_(target), find_table_(find_table), translate_subquery_([this](const Query& query, const Scope& outer) {
        TranslatedQuery translated = Translate(query, &outer);
        SubquerySql result{std::move(translated.sql), {}};
        for (const ResultColumn& column : translated.columns) result.classes.push_back(column.cls);
        return result;
      }) {}

TranslatedQuery SelectTranslator::Translate(const Query& query, const Scope* outer) {
  ++depth_;
  TranslatedQuery result = query.arms.size() == 1 ? TranslateSingle(query, outer) : TranslateUnion(query, outer);
  --depth_;
  return result;
}

TranslatedQuery SelectTranslator::TranslateSingle(const Query& query, const Scope* outer) {
  TranslatedQuery result;
  const BoundSelect select = Bind(query.arms[0], outer, &query.order);
  result.columns = select.columns;
  result.sql = Write(select, select.outputs, ClassesOf(select.columns));
  if (select.distinct && emitter().OrdersUnasked() && !select.order.empty()) {
    result.sql = emitter().OrderedUnion(std::move(result.sql), DistinctKeys(query, select));
  } else if (!select.order.empty()) {
    result.sql += " ORDER BY " + Joined(select.order, ", ");
  }
  if (select.top) result.sql += emitter().TopAtEnd(*select.top);
  return result;
}

// Rows of SELECT DISTINCT can be ordered by nothing but what they show.
std::vector<Emitter::UnionKey> SelectTranslator::DistinctKeys(const Query& query, const BoundSelect& select) {
  std::vector<Emitter::UnionKey> keys;
  for (size_t index = 0; index < select.order_keys.size(); ++index) {
    const TypedSql& key = select.order_keys[index];
    const auto shown = std::find_if(select.outputs.begin(), select.outputs.end(),
                                    [&](const TypedSql& output) { return output.sql == key.sql; });
    if (shown == select.outputs.end())
      throw Refusal(query.arms[0].offset, "SELECT DISTINCT 的 ORDER BY 只能使用结果中的字段");
    keys.push_back({static_cast<size_t>(shown - select.outputs.begin()) + 1, key.cls, select.descending[index]});
  }
  return keys;
}

TranslatedQuery SelectTranslator::TranslateUnion(const Query& query, const Scope* outer) {
  TranslatedQuery result;
  std::vector<BoundSelect> arms;
  for (const SelectCore& core : query.arms) {
    arms.push_back(Bind(core, outer, nullptr));
    if (arms.back().columns.size() != arms.front().columns.size()) {
      throw Refusal(core.offset, "UNION 两侧的字段数不同：" + std::to_string(arms.front().columns.size()) + " 与 " +
                                     std::to_string(arms.back().columns.size()));
    }
  }
  result.columns = arms.front().columns;
  for (size_t index = 0; index < result.columns.size(); ++index) {
    ValueClass cls = ValueClass::kNull;
    for (const BoundSelect& arm : arms) cls = emitter().Common(cls, arm.columns[index].cls);
    result.columns[index].cls = cls;
  }
  for (size_t arm = 0; arm < arms.size(); ++arm) {
    if (arm > 0) result.sql += query.union_all[arm - 1] ? " UNION ALL " : " UNION ";
    const std::string sql = Write(arms[arm], arms[arm].outputs, ClassesOf(result.columns));
    const bool wrapped = arms[arm].top && !emitter().TopAtEnd(*arms[arm].top).empty();
    result.sql += wrapped ? "SELECT * FROM (" + sql + emitter().TopAtEnd(*arms[arm].top) + ") AS u" : sql;
  }
  std::vector<Emitter::UnionKey> keys;
  for (const OrderItem& item : query.order) {
    const size_t place = ResolveOrder(*item.expr, result.columns);
    keys.push_back({place + 1, result.columns[place].cls, item.descending});
  }
  if (!keys.empty()) result.sql = emitter().OrderedUnion(std::move(result.sql), keys);
  return result;
}

BoundSelect SelectTranslator::Bind(const SelectCore& core, const Scope* outer, const std::vector<OrderItem>* order) {
  BoundSelect select;
  select.scope = std::make_unique<Scope>();
  select.scope->outer = outer;
  select.distinct = core.distinct;
  select.top = core.top;
  BindFrom(core, select);
  if (core.where != nullptr) BindWhere(*core.where, select);
  BindGroups(core, select);
  BindItems(core, select);
  if (core.having != nullptr) {
    auto expressions = Expressions(*select.scope);
    expressions.SetGroups(&select.groups);
    const TypedSql having = expressions.TranslateCondition(*core.having);
    CheckGrouped(having);
    select.having = having.sql;
    select.aggregated = true;
  }
  for (const TypedSql& output : select.outputs) select.aggregated = select.aggregated || output.has_aggregate;
  if (select.aggregated) {
    for (const TypedSql& output : select.outputs) CheckGrouped(output);
  }
  for (TypedSql& output : select.outputs) output = emitter().Canonical(std::move(output));
  if (order != nullptr && !order->empty()) {
    auto expressions = Expressions(*select.scope);
    expressions.SetGroups(&select.groups);
    SelectOrder(emitter()).Bind(*order, expressions, select);
  } else if (order != nullptr && depth_ <= 1 && emitter().OrdersUnasked()) {
    SelectOrder(emitter()).BindUnasked(select);
  }
  return select;
}

std::string SelectTranslator::Write(const BoundSelect& select, const std::vector<TypedSql>& outputs,
                                    const std::vector<ValueClass>& classes) const {
  std::string sql = select.distinct ? "SELECT DISTINCT " : "SELECT ";
  if (select.top) sql += emitter().TopAtFront(*select.top);
  for (size_t index = 0; index < outputs.size(); ++index) {
    const TypedSql& output = outputs[index];
    sql.append(index == 0 ? "" : ", ");
    sql.append(output.cls == classes[index] ? output.sql : emitter().ConvertTo(output, classes[index]).sql);
    sql.append(" AS c").append(std::to_string(index));
  }
  if (!select.from.empty()) sql += " FROM " + select.from;
  for (size_t index = 0; index < select.conditions.size(); ++index) {
    sql.append(index == 0 ? " WHERE " : " AND ").append(select.conditions[index].sql);
  }
  if (!select.groups.empty()) sql += " GROUP BY " + Joined(SqlOf(select.group_values), ", ");
  if (!select.having.empty()) sql += " HAVING " + select.having;
  return sql;
}

void SelectTranslator::BindFrom(const SelectCore& core, BoundSelect& select) {
  for (const auto& ref : core.from) {
    if (!select.from.empty()) select.from += ", ";
    BindJoin(*ref, select, core.from.size() == 1 ? JoinPlace::kInChain : JoinPlace::kElsewhere);
  }
  select.chained = core.from.size() == 1 && select.joins.size() + 1 == select.scope->sources.size();
}

void SelectTranslator::BindSource(const TableRef& ref, BoundSelect& select) {
  BoundSource source;
  source.id = next_source_++;
  source.alias = "t" + std::to_string(source.id);
  source.name = ref.alias.empty() ? ref.name : ref.alias;
  if (ref.query != nullptr) {
    const TranslatedQuery query = Translate(*ref.query, select.scope->outer);
    select.from += "(" + query.sql + ") AS " + source.alias;
    for (size_t index = 0; index < query.columns.size(); ++index) {
      const ResultColumn& column = query.columns[index];
      source.columns.push_back(
          {column.name, source.alias + ".c" + std::to_string(index), column.cls, ResultFormOf(column.cls), source.id});
    }
  } else {
    source.table = find_table_(ref.name);
    if (source.table == nullptr) throw Refusal(ref.offset, "数据库中没有名为“" + ref.name + "”的表");
    select.from += emitter().Name(source.table->name) + " AS " + source.alias;
    source.columns.reserve(source.table->columns.size());
    for (const TableColumn& column : source.table->columns) {
      source.columns.push_back({column.name, source.alias + "." + emitter().Name(column.name), column.cls,
                                emitter().ColumnForm(column.cls), source.id});
    }
  }
  select.scope->sources.push_back(std::move(source));
}

// Joins nest to the left without parentheses; a join on the right side of another keeps its own.
void SelectTranslator::BindJoin(const TableRef& ref, BoundSelect& select, JoinPlace place) {
  if (ref.left == nullptr) {
    BindSource(ref, select);
    return;
  }
  const size_t first = select.scope->sources.size();
  BindJoin(*ref.left, select, place);
  const SourceSet left = SetOf(*select.scope, first);
  const char* word = ref.join == JoinType::kInner  ? " JOIN "
                     : ref.join == JoinType::kLeft ? " LEFT JOIN "
                                                   : " RIGHT JOIN ";
  select.from += word;
  const size_t middle = select.scope->sources.size();
  const bool nested = ref.right->left != nullptr;
  if (nested) select.from += "(";
  BindJoin(*ref.right, select, JoinPlace::kElsewhere);
  if (nested) select.from += ")";
  JoinStep step;
  step.type = ref.join;
  step.source = middle;
  if (ref.on != nullptr) BindOn(ref, select, left, SetOf(*select.scope, middle), step);
  if (place == JoinPlace::kInChain) select.joins.push_back(step);
}

void SelectTranslator::BindOn(const TableRef& ref, BoundSelect& select, SourceSet left, SourceSet right,
                              JoinStep& step) {
  const Scope& scope = *select.scope;
  if (target_.dialect == Dialect::kDesktop) CheckDesktopOn(*ref.on, scope, left, right);
  auto expressions = Expressions(scope);
  expressions.ForbidAggregates("ON");
  const TypedSql on = expressions.TranslateCondition(*ref.on);
  select.from += " ON " + on.sql;
  const Expr& expr = *ref.on;
  if (expr.kind != ExprKind::kBinary || expr.text != "=") return;
  const auto column_of = [&](const Expr& side) {
    return side.kind == ExprKind::kColumn ? &scope.Find(side.qualifier, side.text, side.offset) : nullptr;
  };
  const BoundColumn* a = column_of(*expr.operands[0]);
  const BoundColumn* b = column_of(*expr.operands[1]);
  if (a == nullptr || b == nullptr || a->form != Form::kPlain || b->form != Form::kPlain) return;
  if (right.Contains(a->source)) std::swap(a, b);
  if (!left.Contains(a->source) || !right.Contains(b->source)) return;
  step.old_column = a;
  step.new_column = b;
}

// The desktop database joins on nothing but comparisons of a column of one side with a column of the other.
void SelectTranslator::CheckDesktopOn(const Expr& on, const Scope& scope, SourceSet left, SourceSet right) const {
  static constexpr std::string_view kComparisons = "= <> <= >= < >";
  if (on.kind == ExprKind::kBinary && (on.text == "AND" || on.text == "OR")) {
    CheckDesktopOn(*on.operands[0], scope, left, right);
    CheckDesktopOn(*on.operands[1], scope, left, right);
    return;
  }
  bool supported = on.kind == ExprKind::kBinary && kComparisons.find(on.text) != std::string_view::npos &&
                   on.operands[0]->kind == ExprKind::kColumn && on.operands[1]->kind == ExprKind::kColumn;
  if (supported) {
    const Expr& first = *on.operands[0];
    const Expr& second = *on.operands[1];
    const size_t a = scope.Find(first.qualifier, first.text, first.offset).source;
    const size_t b = scope.Find(second.qualifier, second.text, second.offset).source;
    supported = (left.Contains(a) && right.Contains(b)) || (right.Contains(a) && left.Contains(b));
  }
  if (!supported) throw Refusal(on.offset, "JOIN expression not supported.");
}

void SelectTranslator::BindItems(const SelectCore& core, BoundSelect& select) {
  auto expressions = Expressions(*select.scope);
  expressions.SetGroups(&select.groups);
  for (const SelectItem& item : core.items) {
    if (item.expr == nullptr) {
      AddAll(item, select);
      continue;
    }
    TypedSql value = expressions.TranslateValue(*item.expr);
    std::string name = item.alias;
    if (name.empty())
      name = item.expr->kind == ExprKind::kColumn ? item.expr->text
                                                  : "Expr" + std::to_string(1000 + select.outputs.size());
    select.columns.push_back({std::move(name), value.cls});
    select.outputs.push_back(std::move(value));
  }
}

void SelectTranslator::AddAll(const SelectItem& item, BoundSelect& select) {
  const Scope& scope = *select.scope;
  const BoundSource* only = item.all_of.empty() ? nullptr : &scope.FindSource(item.all_of, item.offset);
  if (scope.sources.empty()) throw Refusal(item.offset, "“*”需要 FROM");
  for (const BoundSource& source : scope.sources) {
    if (only != nullptr && only->id != source.id) continue;
    for (const BoundColumn& column : source.columns) {
      TypedSql value = ColumnValue(column);
      const bool grouped = std::find(select.groups.begin(), select.groups.end(), column.sql) != select.groups.end();
      if (!grouped) value.ungrouped = item.offset;
      select.columns.push_back({column.name, column.cls});
      select.outputs.push_back(std::move(value));
      // SQLite would refuse them as well, but "*, *" of "*, *" doubles them until no memory is left.
      constexpr size_t kMostColumns = 2000;
      if (select.columns.size() > kMostColumns)
        throw Refusal(item.offset, "结果的字段太多，最多 " + std::to_string(kMostColumns) + " 个");
    }
  }
}

void SelectTranslator::BindWhere(const Expr& where, BoundSelect& select) {
  if (where.kind == ExprKind::kBinary && where.text == "AND") {
    BindWhere(*where.operands[0], select);
    BindWhere(*where.operands[1], select);
    return;
  }
  auto expressions = Expressions(*select.scope);
  expressions.ForbidAggregates("WHERE");
  select.conditions.push_back(expressions.TranslateCondition(where));
}

void SelectTranslator::BindGroups(const SelectCore& core, BoundSelect& select) {
  auto expressions = Expressions(*select.scope);
  expressions.ForbidAggregates("GROUP BY");
  for (const ExprPtr& expr : core.group_by) {
    const TypedSql value = expressions.TranslateValue(*expr);
    if (value.constant) throw Refusal(expr->offset, "GROUP BY 中不能是常量");
    select.groups.push_back(value.sql);
    select.group_values.push_back(emitter().Canonical(value));
    select.aggregated = true;
  }
}

}  // namespace stockbook::databases
