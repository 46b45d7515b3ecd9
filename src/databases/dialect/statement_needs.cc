// SPDX-License-Identifier: MIT
#include "databases/dialect/statement_needs.h"

#include <algorithm>
#include <optional>

#include "base/number.h"
#include "base/text.h"

namespace stockbook::databases {
namespace {

// The digits of a whole number that 64 bits hold, or nothing.
std::optional<std::string> WholeLiteral(const Expr& expr) {
  const bool negative = expr.kind == ExprKind::kUnary && expr.text == "-";
  const Expr& digits = negative ? *expr.operands.front() : expr;
  if (digits.kind != ExprKind::kInteger) return std::nullopt;
  const auto number = base::ParseInteger(digits.text);
  if (!number) return std::nullopt;
  return std::to_string(negative ? -*number : *number);
}

// `column = number`, either way round, or `column IN (numbers)`.
struct ReadCondition {
  const Expr* column = nullptr;
  std::vector<std::string> numbers;
};
std::optional<ReadCondition> ConditionOf(const Expr& expr) {
  ReadCondition condition;
  size_t first_number = 1;
  if (expr.kind == ExprKind::kBinary && expr.text == "=") {
    const bool turned = expr.operands[1]->kind == ExprKind::kColumn;
    condition.column = expr.operands[turned ? 1 : 0].get();
    first_number = turned ? 0 : 1;
  } else if (expr.kind == ExprKind::kIn && !expr.negated && expr.query == nullptr) {
    condition.column = expr.operands[0].get();
  }
  if (condition.column == nullptr || condition.column->kind != ExprKind::kColumn) return std::nullopt;
  for (size_t index = first_number; index < expr.operands.size(); ++index) {
    if (expr.operands[index].get() == condition.column) continue;
    const auto number = WholeLiteral(*expr.operands[index]);
    if (!number) return std::nullopt;
    condition.numbers.push_back(*number);
  }
  return condition.numbers.empty() ? std::nullopt : std::optional(condition);
}

// `column <= text`, or `column = text` either way round.
std::optional<TextLimit> LimitOf(const Expr& expr, const Expr*& column) {
  if (expr.kind != ExprKind::kBinary || (expr.text != "=" && expr.text != "<=")) return std::nullopt;
  const bool turned = expr.text == "=" && expr.operands[1]->kind == ExprKind::kColumn;
  column = expr.operands[turned ? 1 : 0].get();
  const Expr& text = *expr.operands[turned ? 0 : 1];
  if (column->kind != ExprKind::kColumn || text.kind != ExprKind::kText) return std::nullopt;
  return TextLimit{column->text, text.text, expr.text == "="};
}

const std::string& CalledName(const TableRef& ref) { return ref.alias.empty() ? ref.name : ref.alias; }

// The one table that a column may belong to, or nullptr.
const TableRef* OwnerOf(const Expr& column, const std::vector<const TableRef*>& named) {
  const TableRef* owner = nullptr;
  for (const TableRef* ref : named) {
    if (!column.qualifier.empty() && !base::EqualsIgnoringCase(CalledName(*ref), column.qualifier)) continue;
    if (owner != nullptr) return nullptr;
    owner = ref;
  }
  return owner == nullptr || owner->query != nullptr ? nullptr : owner;
}

}  // namespace

StatementNeeds::StatementNeeds(const Query& query) {
  AddQuery(query);
  // A table that is read twice is read once for both, so the conditions of one say nothing.
  for (TableNeeds& needs : tables_) {
    if (IsReadOnce(needs.name)) continue;
    needs.conditions.clear();
    needs.limits.clear();
  }
}

const TableNeeds* StatementNeeds::Find(std::string_view table) const {
  const auto found = std::find_if(tables_.begin(), tables_.end(),
                                  [&](const TableNeeds& needs) { return base::EqualsIgnoringCase(needs.name, table); });
  return found == tables_.end() ? nullptr : &*found;
}

bool StatementNeeds::IsReadOnce(std::string_view table) const {
  const auto found = mentions_.find(base::AsciiLower(table));
  return found != mentions_.end() && found->second == 1;
}

bool StatementNeeds::JoinsRows(std::string_view table, std::string_view other, std::string_view column) const {
  const auto same = [](std::string_view left, std::string_view right) { return base::EqualsIgnoringCase(left, right); };
  return IsReadOnce(table) && IsReadOnce(other) &&
         std::any_of(joins_.begin(), joins_.end(), [&](const InnerJoin& join) {
           return same(join.column, column) && ((same(join.table, table) && same(join.other, other)) ||
                                                (same(join.table, other) && same(join.other, table)));
         });
}

bool StatementNeeds::NamesColumn(const std::string& column) const {
  return columns_.contains(base::AsciiLower(column));
}

void StatementNeeds::AddQuery(const Query& query) {
  for (const SelectCore& core : query.arms) AddCore(core);
  for (const OrderItem& item : query.order) AddExpression(*item.expr);
}

void StatementNeeds::AddCore(const SelectCore& core) {
  std::vector<const TableRef*> named;
  for (const auto& ref : core.from) AddSource(*ref, named);
  for (const SelectItem& item : core.items) {
    if (item.expr != nullptr) {
      AddExpression(*item.expr);
      continue;
    }
    for (const TableRef* ref : named) {
      if (ref->query != nullptr) continue;
      if (item.all_of.empty() || base::EqualsIgnoringCase(CalledName(*ref), item.all_of))
        NeedsOf(ref->name).all_columns = true;
    }
  }
  for (const ExprPtr& expr : core.group_by) AddExpression(*expr);
  if (core.having != nullptr) AddExpression(*core.having);
  if (core.where == nullptr) return;
  AddExpression(*core.where);
  AddConditions(*core.where, named);
}

void StatementNeeds::AddSource(const TableRef& ref, std::vector<const TableRef*>& named) {
  if (ref.left != nullptr) {
    AddSource(*ref.left, named);
    AddSource(*ref.right, named);
    if (ref.on == nullptr) return;
    AddExpression(*ref.on);
    if (ref.join == JoinType::kInner) AddJoins(*ref.on, named);
  } else if (ref.query != nullptr) {
    AddQuery(*ref.query);
    // It takes a name of its own, which no condition on a table may mean.
    named.push_back(&ref);
  } else {
    NeedsOf(ref.name);
    ++mentions_[base::AsciiLower(ref.name)];
    named.push_back(&ref);
  }
}

void StatementNeeds::AddExpression(const Expr& expr) {
  if (expr.kind == ExprKind::kColumn) columns_.insert(base::AsciiLower(expr.text));
  for (const ExprPtr& operand : expr.operands) AddExpression(*operand);
  if (expr.query != nullptr) AddQuery(*expr.query);
}

// A row that fails such a condition is dropped after every kind of join, and with it what was joined to it: a left
// join that finds nothing instead gives a null, which fails as well.
void StatementNeeds::AddConditions(const Expr& where, const std::vector<const TableRef*>& named) {
  if (where.kind == ExprKind::kBinary && where.text == "AND") {
    for (const ExprPtr& operand : where.operands) AddConditions(*operand, named);
    return;
  }
  const Expr* column = nullptr;
  if (const auto limit = LimitOf(where, column)) {
    if (const TableRef* owner = OwnerOf(*column, named)) NeedsOf(owner->name).limits.push_back(*limit);
    return;
  }
  const auto condition = ConditionOf(where);
  if (!condition) return;
  if (const TableRef* owner = OwnerOf(*condition->column, named))
    NeedsOf(owner->name).conditions.push_back({condition->column->text, condition->numbers});
}

// Of an inner join: a row that finds none on the other side is dropped.
void StatementNeeds::AddJoins(const Expr& on, const std::vector<const TableRef*>& named) {
  if (on.kind != ExprKind::kBinary) return;
  if (on.text == "AND") {
    for (const ExprPtr& operand : on.operands) AddJoins(*operand, named);
    return;
  }
  const Expr& left = *on.operands[0];
  const Expr& right = *on.operands[1];
  if (on.text != "=" || left.kind != ExprKind::kColumn || right.kind != ExprKind::kColumn ||
      !base::EqualsIgnoringCase(left.text, right.text))
    return;
  const TableRef* table = OwnerOf(left, named);
  const TableRef* other = OwnerOf(right, named);
  if (table != nullptr && other != nullptr) joins_.push_back({table->name, other->name, left.text});
}

TableNeeds& StatementNeeds::NeedsOf(const std::string& name) {
  const auto known = std::find_if(tables_.begin(), tables_.end(),
                                  [&](const TableNeeds& needs) { return base::EqualsIgnoringCase(needs.name, name); });
  if (known != tables_.end()) return *known;
  tables_.emplace_back().name = name;
  return tables_.back();
}

}  // namespace stockbook::databases
