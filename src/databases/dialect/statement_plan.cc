// SPDX-License-Identifier: MIT
#include "databases/dialect/statement_plan.h"

#include <algorithm>

#include "base/text.h"
#include "databases/dialect/select_order.h"

namespace stockbook::databases {
namespace {

// SELECT * FROM (query): nothing of its own.
const Query* WrappedQuery(const SelectCore& core) {
  const bool bare =
      !core.distinct && !core.top && core.where == nullptr && core.group_by.empty() && core.having == nullptr;
  if (!bare || core.items.size() != 1 || core.from.size() != 1) return nullptr;
  if (core.items[0].expr != nullptr || !core.items[0].all_of.empty()) return nullptr;
  return core.from[0]->query.get();
}

const SelectCore& Unwrapped(const SelectCore& core) {
  const SelectCore* at = &core;
  for (const Query* inner = WrappedQuery(*at);
       inner != nullptr && inner->arms.size() == 1 && inner->order.empty() && !inner->arms[0].top;
       inner = WrappedQuery(*at)) {
    at = &inner->arms[0];
  }
  return *at;
}

bool IsPlainSelect(const BoundSelect& select) {
  return !select.distinct && !select.aggregated && !select.top &&
         std::all_of(select.scope->sources.begin(), select.scope->sources.end(),
                     [](const BoundSource& source) { return source.table != nullptr && source.table->plain; });
}

// Whether the outputs read nothing outside the FROM of their own select.
bool OutputsAreOwn(const PlanArm& arm) {
  SourceSet own;
  for (const BoundSource& source : arm.select.scope->sources) own.Add(source.id);
  return std::all_of(arm.outputs.begin(), arm.outputs.end(),
                     [&](const TypedSql& output) { return output.sources.IsWithin(own); });
}

// The column of the result that a key names, with or without the name of the derived table around the union.
std::optional<size_t> KeyColumn(const Expr& expr, const std::string& wrapper,
                                const std::vector<ResultColumn>& columns) {
  if (expr.kind == ExprKind::kInteger) return ResolveOrder(expr, columns);
  if (expr.kind != ExprKind::kColumn) return std::nullopt;
  if (!expr.qualifier.empty() && (wrapper.empty() || !base::EqualsIgnoringCase(expr.qualifier, wrapper)))
    return std::nullopt;
  for (size_t index = 0; index < columns.size(); ++index) {
    if (base::EqualsIgnoringCase(columns[index].name, expr.text)) return index;
  }
  return std::nullopt;
}

std::optional<StatementPlan> PlanUnion(const Query& query, const std::vector<OrderItem>& order,
                                       const std::string& wrapper, const Emitter& emitter,
                                       SelectTranslator& translator) {
  if (std::any_of(query.union_all.begin(), query.union_all.end(), [](bool all) { return all; })) return std::nullopt;
  StatementPlan plan;
  plan.distinct_union = true;
  for (const SelectCore& core : query.arms) {
    plan.arms.emplace_back().select = translator.Bind(Unwrapped(core), nullptr, nullptr);
    if (!IsPlainSelect(plan.arms.back().select)) return std::nullopt;
  }
  const std::vector<ResultColumn>& columns = plan.arms[0].select.columns;
  plan.result_columns = columns.size();
  for (const PlanArm& arm : plan.arms) {
    if (arm.select.columns.size() != columns.size()) return std::nullopt;
  }
  std::vector<ValueClass> classes(columns.size(), ValueClass::kNull);
  for (size_t index = 0; index < columns.size(); ++index) {
    for (const PlanArm& arm : plan.arms) classes[index] = emitter.Common(classes[index], arm.select.columns[index].cls);
  }
  plan.columns = columns;
  for (size_t index = 0; index < columns.size(); ++index) plan.columns[index].cls = classes[index];
  for (PlanArm& arm : plan.arms) {
    arm.outputs.reserve(columns.size());
    for (size_t index = 0; index < columns.size(); ++index) {
      arm.outputs.push_back(emitter.ConvertTo(arm.select.outputs[index], classes[index]));
    }
    arm.sql = translator.Write(arm.select, arm.outputs, classes);
    if (!OutputsAreOwn(arm)) return std::nullopt;
  }
  for (const OrderItem& item : order) {
    const auto column = KeyColumn(*item.expr, wrapper, columns);
    if (!column) return std::nullopt;
    plan.keys.push_back({*column, item.descending});
  }
  return plan;
}

std::optional<StatementPlan> PlanSingle(const Query& query, SelectTranslator& translator) {
  StatementPlan plan;
  PlanArm& arm = plan.arms.emplace_back();
  arm.select = translator.Bind(query.arms[0], nullptr, &query.order);
  if (!IsPlainSelect(arm.select) || !arm.select.ordered_by_rows) return std::nullopt;
  arm.outputs = arm.select.outputs;
  plan.result_columns = arm.outputs.size();
  plan.columns = arm.select.columns;
  for (size_t index = 0; index < arm.select.order_keys.size(); ++index) {
    plan.keys.push_back({arm.outputs.size(), arm.select.descending[index]});
    arm.outputs.push_back(arm.select.order_keys[index]);
  }
  for (const TypedSql& key : arm.select.row_keys) {
    plan.keys.push_back({arm.outputs.size(), false});
    arm.outputs.push_back(key);
  }
  std::vector<ValueClass> classes;
  for (const TypedSql& output : arm.outputs) classes.push_back(output.cls);
  arm.sql = translator.Write(arm.select, arm.outputs, classes);
  return OutputsAreOwn(arm) ? std::optional(std::move(plan)) : std::nullopt;
}

}  // namespace

std::optional<StatementPlan> PlanStatement(const Query& query, const Target& target, const TableFinder& find_table) {
  SelectTranslator translator(target, find_table);
  if (query.arms.size() > 1) return PlanUnion(query, query.order, {}, target.emitter, translator);
  const Query* inner = WrappedQuery(query.arms[0]);
  if (inner == nullptr) return query.order.empty() ? std::nullopt : PlanSingle(query, translator);
  const std::string& wrapper = query.arms[0].from[0]->alias;
  while (inner->arms.size() == 1 && inner->order.empty() && WrappedQuery(inner->arms[0]) != nullptr)
    inner = WrappedQuery(inner->arms[0]);
  if (inner->arms.size() < 2 || !inner->order.empty()) return std::nullopt;
  return PlanUnion(*inner, query.order, wrapper, target.emitter, translator);
}

}  // namespace stockbook::databases
