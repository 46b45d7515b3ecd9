// SPDX-License-Identifier: MIT
#include "databases/dialect/select_order.h"

#include <algorithm>
#include <utility>

#include "base/number.h"
#include "base/text.h"
#include "databases/dialect/refusal.h"

namespace stockbook::databases {

TypedSql ColumnValue(const BoundColumn& column) {
  TypedSql value;
  value.sql = column.sql;
  value.cls = column.cls;
  value.form = column.form;
  value.sources.Add(column.source);
  value.column = &column;
  return value;
}

void CheckGrouped(const TypedSql& value) {
  if (value.ungrouped) throw Refusal(*value.ungrouped, "这个字段既不在 GROUP BY 中，也不在聚合函数中");
}

size_t ResolveOrder(const Expr& item, const std::vector<ResultColumn>& columns) {
  if (item.kind == ExprKind::kInteger) {
    const auto ordinal = base::ParseInteger(item.text);
    if (ordinal && *ordinal >= 1 && static_cast<uint64_t>(*ordinal) <= columns.size())
      return static_cast<size_t>(*ordinal - 1);
    throw Refusal(item.offset, "ORDER BY 的序号“" + item.text + "”超出字段数");
  }
  if (item.kind != ExprKind::kColumn || !item.qualifier.empty()) {
    throw Refusal(item.offset, "UNION 的 ORDER BY 只能使用结果的字段名或序号");
  }
  for (size_t index = 0; index < columns.size(); ++index) {
    if (base::EqualsIgnoringCase(columns[index].name, item.text)) return index;
  }
  throw Refusal(item.offset, "ORDER BY 的字段“" + item.text + "”不在结果中");
}

void SelectOrder::Bind(const std::vector<OrderItem>& order, ExpressionTranslator& expressions,
                       BoundSelect& select) const {
  for (const OrderItem& item : order) {
    const Expr& expr = *item.expr;
    const bool plain_name = expr.kind == ExprKind::kColumn && expr.qualifier.empty();
    const bool alias =
        plain_name && std::any_of(select.columns.begin(), select.columns.end(), [&](const ResultColumn& column) {
          return base::EqualsIgnoringCase(column.name, expr.text);
        });
    const char* direction = emitter_.Direction(item.descending);
    if (expr.kind == ExprKind::kInteger || alias) {
      const size_t index = ResolveOrder(expr, select.columns);
      // Where keys are written out, a number would be taken for a place in the result.
      if (emitter_.OrdersUnasked() && select.outputs[index].constant) continue;
      select.order.push_back(emitter_.OrderKey(select.outputs[index], index + 1) + direction);
      select.order_keys.push_back(select.outputs[index]);
      select.descending.push_back(item.descending);
      continue;
    }
    TypedSql key = expressions.TranslateValue(expr);
    if (select.aggregated) CheckGrouped(key);
    key = emitter_.Canonical(std::move(key));
    if (key.constant) continue;
    select.order.push_back(emitter_.OrderKey(key, 0) + direction);
    select.order_keys.push_back(std::move(key));
    select.descending.push_back(item.descending);
  }
  AddRowNumbers(select);
}

// Groups come in the order of what they are grouped by, other rows in that of their tables.
void SelectOrder::BindUnasked(BoundSelect& select) const {
  if (!select.aggregated) {
    AddRowNumbers(select);
    return;
  }
  for (const TypedSql& group : select.group_values)
    select.order.push_back(emitter_.OrderKey(group, 0) + emitter_.Direction(false));
}

// Rows with equal keys come in the order that they have in the tables, first table first.
void SelectOrder::AddRowNumbers(BoundSelect& select) const {
  if (select.distinct || select.aggregated || !select.chained) return;
  const auto& sources = select.scope->sources;
  if (emitter_.OrdersUnasked()) {
    AddRowKeys(select);
    return;
  }
  if (std::any_of(sources.begin(), sources.end(), [](const BoundSource& source) {
        return source.table == nullptr || source.table->row_number.empty();
      })) {
    return;
  }
  for (const BoundSource& source : sources) select.order.push_back(source.alias + "." + source.table->row_number);
  select.ordered_by_rows = true;
}

// The same by the columns that tell the rows of each table apart, as far as they are known.
void SelectOrder::AddRowKeys(BoundSelect& select) const {
  for (const BoundSource& source : select.scope->sources) {
    if (source.table == nullptr) continue;
    for (const std::string& name : source.table->row_keys) {
      const auto column = std::find_if(source.columns.begin(), source.columns.end(),
                                       [&](const BoundColumn& candidate) { return candidate.name == name; });
      if (column == source.columns.end()) continue;
      TypedSql key = ColumnValue(*column);
      const std::string item = emitter_.OrderKey(key, 0) + emitter_.Direction(false);
      const bool known = std::any_of(select.order.begin(), select.order.end(), [&](const std::string& other) {
        return other == item || other == emitter_.OrderKey(key, 0) + emitter_.Direction(true);
      });
      if (known) continue;
      select.order.push_back(item);
      select.row_keys.push_back(std::move(key));
    }
  }
  select.ordered_by_rows = true;
}

}  // namespace stockbook::databases
