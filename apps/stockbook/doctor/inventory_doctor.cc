// SPDX-License-Identifier: MIT
#include "stockbook/doctor/inventory_doctor.h"

#include <memory>
#include <string>

#include "stockbook/doctor/balance_examination.h"
#include "stockbook/doctor/doctor_tables.h"
#include "stockbook/doctor/key_examination.h"
#include "stockbook/doctor/value_examination.h"
#include "stockbook/inventory/inventory_rules.h"
#include "stockbook/inventory/stored_file.h"

namespace stockbook::app {
namespace {

void ExamineIndex(const ExaminedTables& tables, const StoredFile& file, TableName name, std::string_view columns,
                  DoctorReport& report) {
  const std::string column(columns.substr(0, columns.find(',')));
  const ExaminedTable& table = tables.Of(name);
  if (table.Find(column) == nullptr || file.HasIndexOn(table.name(), column)) return;
  report.Group(Ailment::kIndexMissing, table.name(), column).Add([&] {
    return FindingGroup::Example{
        {}, "CREATE INDEX 名称 ON " + std::string(table.name()) + "(" + std::string(columns) + ")"};
  });
}

void ExamineIndexes(const ExaminedTables& tables, const StoredFile& file, DoctorReport& report) {
  for (size_t index = 0; index < kTableCount; ++index) {
    const auto table = static_cast<TableName>(index);
    if (const std::string_view key = NumberKeyOf(table); !key.empty()) ExamineIndex(tables, file, table, key, report);
  }
  for (const InventoryIndex& index : InventoryIndexes()) ExamineIndex(tables, file, index.table, index.columns, report);
}

// Texts that are no dates, which a connection gives as null.
void ExamineStoredDates(const StoredFile& file, DoctorReport& report) {
  for (const TableName table :
       {TableName::ReceiptBills, TableName::IssueBills, TableName::ReceiptLines, TableName::IssueLines}) {
    file.ForEachUnreadableDate(table, [&](std::string_view column, const std::string& key, const std::string& text) {
      report.Group(Ailment::kDateUnreadable, InventoryTableOf(table).name, column).Add([&] {
        return FindingGroup::Example{key, std::string(column) + " 为“" + text + "”"};
      });
    });
  }
}

}  // namespace

DoctorReport ExamineInventory(const DatabaseSource& source, platform::Connection& connection) {
  DoctorReport report(source.name());
  const std::unique_ptr<platform::Moment> moment = connection.ReadAsOfOneMoment();
  const ExaminedTables tables(connection, report);
  ExamineKeys(tables, report);
  ExamineReferences(tables, report);
  ExamineClasses(tables, report);
  ExaminePeriods(tables, report);
  ExamineDates(tables, report);
  ExamineNumbers(tables, report);
  ExamineBalances(tables, report);
  if (source.IsEmbedded()) {
    const StoredFile file(source.file());
    ExamineStoredDates(file, report);
    ExamineIndexes(tables, file, report);
  } else {
    report.LeaveOut("索引", "只检查内置数据库的文件");
  }
  return report;
}

}  // namespace stockbook::app
