// SPDX-License-Identifier: MIT
#include "app/inventory_fixture.h"

#include <sqlite3.h>

#include <array>
#include <sstream>

#include "base/number.h"
#include "stockbook/command/command_line_dispatch.h"
#include "stockbook/command/copy_command.h"
#include "stockbook/command/doctor_command.h"
#include "stockbook/command/import_command.h"
#include "stockbook/command/sample_command.h"

namespace stockbook::app {

Outcome InventoryTest::RunArguments(const std::vector<std::string>& arguments, const std::string& input) const {
  const std::array commands{SampleCommand(), ImportCommand(), CopyCommand(), DoctorCommand()};
  std::istringstream in(input);
  std::ostringstream out;
  std::ostringstream err;
  Terminal terminal{in, out, err};
  const int code = RunProgram(commands, arguments, terminal);
  return {code, out.str(), err.str()};
}

void InventoryTest::Change(const std::string& path, const std::string& sql) {
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
      << sql << ": " << sqlite3_errmsg(database);
  sqlite3_close(database);
}

OpenedInventory::OpenedInventory(const std::string& path) {
  EXPECT_EQ(sqlite3_open_v2(path.c_str(), &database_, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK) << path;
}

OpenedInventory::~OpenedInventory() { sqlite3_close(database_); }

std::vector<std::vector<std::string>> OpenedInventory::Rows(const std::string& sql) const {
  std::vector<std::vector<std::string>> rows;
  sqlite3_stmt* statement = nullptr;
  EXPECT_EQ(sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr), SQLITE_OK)
      << sqlite3_errmsg(database_);
  while (sqlite3_step(statement) == SQLITE_ROW) {
    std::vector<std::string> row;
    for (int column = 0; column < sqlite3_column_count(statement); ++column) {
      if (sqlite3_column_type(statement, column) == SQLITE_FLOAT) {
        row.push_back(base::NumberText(sqlite3_column_double(statement, column)));
      } else {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
        row.emplace_back(text == nullptr ? "NULL" : text);
      }
    }
    rows.push_back(std::move(row));
  }
  sqlite3_finalize(statement);
  return rows;
}

std::vector<std::string> OpenedInventory::Lines(const std::string& sql) const {
  std::vector<std::string> lines;
  for (const auto& row : Rows(sql)) {
    std::string line;
    for (size_t column = 0; column < row.size(); ++column) line += (column == 0 ? "" : "|") + row[column];
    lines.push_back(line);
  }
  return lines;
}

std::string OpenedInventory::One(const std::string& sql) const {
  const auto rows = Rows(sql);
  return rows.size() == 1 && rows.front().size() == 1 ? rows.front().front() : "not one value";
}

}  // namespace stockbook::app
