// SPDX-License-Identifier: MIT
#include "stockbook/doctor/key_examination.h"

#include <array>
#include <map>
#include <unordered_map>
#include <unordered_set>

#include "stockbook/doctor/keyed_rows.h"
#include "stockbook/inventory/inventory_rules.h"

namespace stockbook::app {
namespace {

using Example = FindingGroup::Example;

struct ClassRule {
  TableName members;
  TableName classes;
};
constexpr std::array<ClassRule, 4> kClassRules{{{TableName::Products, TableName::ProductClasses},
                                                {TableName::Suppliers, TableName::SupplierClasses},
                                                {TableName::Customers, TableName::CustomerClasses},
                                                {TableName::Projects, TableName::ProjectClasses}}};

void ExamineNumberKey(const ExaminedTable& table, std::string_view name, DoctorReport& report) {
  const columns::Column* keys = table.Find(name);
  if (keys == nullptr) return;
  FindingGroup& nulls = report.Group(Ailment::kKeyNull, table.name(), name);
  FindingGroup& others = report.Group(Ailment::kKeyNoNumber, table.name(), name);
  FindingGroup& twice = report.Group(Ailment::kKeyDuplicate, table.name(), name);
  const KeyedRows rows(*keys);
  for (size_t row = 0; row < keys->size(); ++row) {
    const auto key = WholeAt(*keys, row);
    if (!key && IsBlankAt(*keys, row)) {
      nulls.Add([&] { return Example{"第 " + std::to_string(row + 1) + " 行", "键为空"}; });
    } else if (!key) {
      others.Add([&] { return Example{table.KeyText(row), "不是整数"}; });
    } else if (const auto first = rows.Find(*key); first && *first != row) {
      twice.Add([&] {
        return Example{table.KeyText(row),
                       "第 " + std::to_string(*first + 1) + " 行和第 " + std::to_string(row + 1) + " 行"};
      });
    }
  }
}

// Texts that identify rows: periods and class codes.
void ExamineTextKey(const ExaminedTable& table, std::string_view name, Ailment twice_ailment, DoctorReport& report) {
  const columns::Column* keys = table.Find(name);
  if (keys == nullptr) return;
  const bool is_class = twice_ailment == Ailment::kClassDuplicate;
  FindingGroup& nulls = report.Group(is_class ? twice_ailment : Ailment::kKeyNull, table.name(), name);
  FindingGroup& twice = report.Group(twice_ailment, table.name(), name);
  std::unordered_map<std::string, size_t> seen;
  for (size_t row = 0; row < keys->size(); ++row) {
    if (IsBlankAt(*keys, row)) {
      nulls.Add([&] { return Example{"第 " + std::to_string(row + 1) + " 行", "为空"}; });
      continue;
    }
    const auto found = seen.emplace(keys->Text(row), row);
    if (found.second) continue;
    twice.Add([&] {
      return Example{table.KeyText(row),
                     "第 " + std::to_string(found.first->second + 1) + " 行和第 " + std::to_string(row + 1) + " 行"};
    });
  }
}

// The keys that references lead to, each read once.
class Targets {
 public:
  explicit Targets(const ExaminedTables& tables) : tables_(tables) {}

  // nullptr if the target has no key column to look in.
  const KeyedRows* Of(TableName table) {
    const columns::Column* keys = tables_.Of(table).Find(NumberKeyOf(table));
    if (keys == nullptr) return nullptr;
    return &rows_.try_emplace(table, *keys).first->second;
  }

 private:
  const ExaminedTables& tables_;
  std::map<TableName, KeyedRows> rows_;
};

std::string AbsenceText(std::string_view column, const std::string& value, TableName target) {
  return std::string(column) + "=" + value + " 在 " + std::string(InventoryTableOf(target).name) + " 中不存在";
}

void ExamineReference(const ExaminedTables& tables, const InventoryReference& reference, Targets& targets,
                      DoctorReport& report) {
  const ExaminedTable& table = tables.Of(reference.table);
  const columns::Column* column = table.Find(reference.column);
  const KeyedRows* rows = targets.Of(reference.target);
  if (column == nullptr || rows == nullptr) return;
  FindingGroup& dangling = report.Group(Ailment::kReferenceDangling, table.name(), reference.column);
  FindingGroup& missing = report.Group(Ailment::kReferenceMissing, table.name(), reference.column);
  for (size_t row = 0; row < column->size(); ++row) {
    const auto key = WholeAt(*column, row);
    if (key && rows->Find(*key)) continue;
    if (key == 0 || IsBlankAt(*column, row)) {
      if (reference.required) {
        missing.Add([&] { return Example{table.KeyText(row), std::string(reference.column) + " 为空"}; });
      }
      continue;
    }
    dangling.Add([&] {
      return Example{table.KeyText(row), AbsenceText(reference.column, column->Text(row), reference.target)};
    });
  }
}

// An issue names the stock that it came from: a receipt's line by its key, or a depot's balance by its negative one.
void ExamineSources(const ExaminedTables& tables, Targets& targets, DoctorReport& report) {
  const ExaminedTable& lines = tables.Of(TableName::IssueLines);
  const columns::Column* column = lines.Find("OtherID");
  const KeyedRows* receipts = targets.Of(TableName::ReceiptLines);
  const KeyedRows* balances = targets.Of(TableName::DepotBalances);
  if (column == nullptr || receipts == nullptr || balances == nullptr) return;
  FindingGroup& dangling = report.Group(Ailment::kReferenceDangling, lines.name(), "OtherID");
  for (size_t row = 0; row < column->size(); ++row) {
    const auto key = WholeAt(*column, row);
    if (!key || *key == 0 || *key == INT64_MIN) continue;
    if (*key > 0 ? receipts->Find(*key) : balances->Find(-*key)) continue;
    dangling.Add([&] {
      const TableName target = *key > 0 ? TableName::ReceiptLines : TableName::DepotBalances;
      return Example{lines.KeyText(row), AbsenceText("OtherID", column->Text(row), target)};
    });
  }
}

void ExamineMembers(const ExaminedTable& members, const ExaminedTable& classes, DoctorReport& report) {
  const columns::Column* codes = classes.Find("ClassCode");
  const columns::Column* used = members.Find("ClassCode");
  if (codes == nullptr || used == nullptr) return;
  std::unordered_set<std::string> known;
  for (size_t row = 0; row < codes->size(); ++row) known.insert(codes->Text(row));
  FindingGroup& unknown = report.Group(Ailment::kClassUnknown, members.name(), "ClassCode");
  for (size_t row = 0; row < used->size(); ++row) {
    if (IsBlankAt(*used, row) || known.contains(used->Text(row))) continue;
    unknown.Add([&] {
      return Example{members.KeyText(row),
                     "ClassCode=" + used->Text(row) + " 在 " + std::string(classes.name()) + " 中不存在"};
    });
  }
}

}  // namespace

void ExamineKeys(const ExaminedTables& tables, DoctorReport& report) {
  for (size_t index = 0; index < kTableCount; ++index) {
    const auto table = static_cast<TableName>(index);
    if (const std::string_view name = NumberKeyOf(table); !name.empty())
      ExamineNumberKey(tables.Of(table), name, report);
  }
  ExamineTextKey(tables.Of(TableName::Periods), "AccPeriod", Ailment::kKeyDuplicate, report);
}

void ExamineReferences(const ExaminedTables& tables, DoctorReport& report) {
  Targets targets(tables);
  for (const InventoryReference& reference : InventoryReferences())
    ExamineReference(tables, reference, targets, report);
  ExamineSources(tables, targets, report);
}

void ExamineClasses(const ExaminedTables& tables, DoctorReport& report) {
  for (const ClassRule& rule : kClassRules) {
    ExamineTextKey(tables.Of(rule.classes), "ClassCode", Ailment::kClassDuplicate, report);
    ExamineMembers(tables.Of(rule.members), tables.Of(rule.classes), report);
  }
}

}  // namespace stockbook::app
