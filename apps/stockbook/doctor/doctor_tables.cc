// SPDX-License-Identifier: MIT
#include "stockbook/doctor/doctor_tables.h"

#include <algorithm>

#include "base/text.h"
#include "stockbook/inventory/inventory_rules.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

bool HasField(const std::vector<platform::Field>& fields, std::string_view name) {
  return std::any_of(fields.begin(), fields.end(),
                     [&](const platform::Field& field) { return base::EqualsIgnoringCase(field.name, name); });
}

// Names, remarks and the like may be anything; they are not read.
bool IsExamined(const InventoryColumn& column) {
  return column.type != "TEXT" || column.name == "AccPeriod" || column.name == "bnPeriod" || column.name == "ClassCode";
}

}  // namespace

const columns::Column* ExaminedTable::Find(std::string_view column) const {
  const auto found = std::find_if(fields_.begin(), fields_.end(), [&](const platform::Field& field) {
    return base::EqualsIgnoringCase(field.name, column);
  });
  return found == fields_.end() ? nullptr : &found->column;
}

std::string ExaminedTable::KeyText(size_t row) const {
  std::string text;
  for (const std::string_view name : key_columns_) {
    const columns::Column* column = Find(name);
    if (column == nullptr) continue;
    if (!text.empty()) text += ' ';
    text.append(name).append("=").append(column->IsNull(row) ? "空" : column->Text(row));
  }
  return text.empty() ? "第 " + std::to_string(row + 1) + " 行" : text;
}

ExaminedTables::ExaminedTables(platform::Connection& connection, DoctorReport& report) {
  for (size_t index = 0; index < kTableCount; ++index) Read(connection, static_cast<TableName>(index), report);
}

void ExaminedTables::Read(platform::Connection& connection, TableName table, DoctorReport& report) {
  ExaminedTable& read = tables_[static_cast<size_t>(table)];
  const InventoryTable& schema = InventoryTableOf(table);
  read.name_ = schema.name;
  read.key_columns_ = IdentifyingColumns(table);
  try {
    const std::string name(schema.name);
    const std::vector<platform::Field> first = connection.Execute("Select Top 1 * From " + name).TakeAll();
    std::string list;
    for (const InventoryColumn& column : schema.columns) {
      const bool found = HasField(first, column.name);
      if (!found && column.name != kUnreadColumn) {
        report.Group(Ailment::kColumnMissing, name).Add([&] {
          return FindingGroup::Example{std::string(column.name), {}};
        });
      }
      if (found && IsExamined(column)) list.append(list.empty() ? "" : ", ").append(column.name);
    }
    if (list.empty()) return;
    platform::Recordset rows = connection.Execute("Select " + list + " From " + name);
    read.rows_ = rows.RecordCount();
    read.fields_ = rows.TakeAll();
    report.CountRows(name, read.rows_);
  } catch (const platform::Error& error) {
    if (error.IsOfEngine()) throw;
    report.Group(Ailment::kTableMissing, schema.name).Add([&] { return FindingGroup::Example{{}, error.what()}; });
  }
}

}  // namespace stockbook::app
