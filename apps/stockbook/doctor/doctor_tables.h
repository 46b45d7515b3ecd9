// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/doctor/doctor_report.h"
#include "stockbook/inventory/inventory_schema.h"
#include "stockbook/platform/connection.h"

namespace stockbook::app {

// The columns of one table that an examination looks at: keys, periods, dates, numbers and class codes.
class ExaminedTable {
 public:
  std::string_view name() const { return name_; }
  size_t rows() const { return rows_; }
  // Ignoring ASCII case; nullptr if the database has no such column, or no such table.
  const columns::Column* Find(std::string_view column) const;
  // "RecID=17": what tells the row from others, for messages.
  std::string KeyText(size_t row) const;

 private:
  friend class ExaminedTables;
  std::string_view name_;
  std::vector<std::string_view> key_columns_;
  size_t rows_ = 0;
  std::vector<platform::Field> fields_;
};

// The inventory in memory, read column by column with one statement a table. Reports the tables and columns that are
// missing. Passes errors of the engine on.
class ExaminedTables {
 public:
  ExaminedTables(platform::Connection& connection, DoctorReport& report);

  const ExaminedTable& Of(TableName table) const { return tables_[static_cast<size_t>(table)]; }

 private:
  void Read(platform::Connection& connection, TableName table, DoctorReport& report);

  std::array<ExaminedTable, kTableCount> tables_;
};

// A whole number, or nothing for null and for what is none.
inline std::optional<int64_t> WholeAt(const columns::Column& column, size_t row) { return column.At(row).AsInteger(); }

// Null or an empty text.
inline bool IsBlankAt(const columns::Column& column, size_t row) {
  const base::Value value = column.At(row);
  const auto* text = value.As<std::string>();
  return value.IsNull() || (text != nullptr && text->empty());
}

}  // namespace stockbook::app
