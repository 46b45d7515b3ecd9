// SPDX-License-Identifier: MIT
#include "app/inventory_fixture.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <random>
#include <sstream>

#include "base/number.h"
#include "stockbook/command/command_line_dispatch.h"
#include "stockbook/command/import_command.h"
#include "stockbook/command/sample_command.h"

namespace stockbook::app {

InventoryTest::InventoryTest() {
  std::random_device random;
  folder_ =
      std::filesystem::temp_directory_path() / ("stockbook-" + std::to_string(random()) + std::to_string(random()));
  std::filesystem::create_directories(folder_);
}

InventoryTest::~InventoryTest() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

std::string InventoryTest::Write(std::string_view name, std::string_view text) const {
  const std::string path = PathOf(name);
  std::ofstream(path, std::ios::binary) << text;
  return path;
}

std::string InventoryTest::ReadAll(const std::string& path) const {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::string> InventoryTest::Files() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder_))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

Outcome InventoryTest::RunArguments(const std::vector<std::string>& arguments, const std::string& input) const {
  const std::array commands{SampleCommand(), ImportCommand()};
  std::istringstream in(input);
  std::ostringstream out;
  std::ostringstream err;
  Terminal terminal{in, out, err};
  const int code = RunProgram(commands, arguments, terminal);
  return {code, out.str(), err.str()};
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
