// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/platform/recordset.h"

namespace stockbook::testing {

// A database file for one test, open for writing and deleted at its end.
class DatabaseFile {
 public:
  explicit DatabaseFile(std::string_view file_name = "inventory.db");
  ~DatabaseFile();
  DatabaseFile(const DatabaseFile&) = delete;
  DatabaseFile& operator=(const DatabaseFile&) = delete;

  // Runs a statement in SQLite's own language; the test fails if it does.
  void Run(const std::string& sql);
  sqlite3* handle() const { return handle_; }
  const std::string& path() const { return path_; }
  // For statements over tables of any name.
  std::string DesktopString() const { return "Provider=Stockbook.Embedded;Tables=*;Data Source=" + path_; }
  std::string ServerString() const { return "Provider=Stockbook.Embedded;Tables=*;Dialect=SQL;Data Source=" + path_; }

 private:
  std::string folder_;
  std::string path_;
  sqlite3* handle_ = nullptr;
};

// The tables of an inventory. `types` chooses how money, quantities and dates are declared.
struct InventoryTypes {
  std::string money = "MONEY TEXT";
  std::optional<std::string> price = {};  // of balances; as money where it is not set
  std::string quantity = "REAL";
  std::string date = "DATE";
  std::string master_key = "INTEGER PRIMARY KEY";
};
void CreateInventory(DatabaseFile& file, const InventoryTypes& types = {});

// Two depots, three products, a supplier, a customer, projects in a class tree, and a few bills of them all.
void FillInventory(DatabaseFile& file);

// Field texts of a row joined by "|".
std::string RowText(const platform::Recordset& rows);
// All rows of a recordset as RowText, one line each; null is "~".
std::vector<std::string> AllRows(platform::Recordset rows);

// Values with their types: "int:5", "text:…"; a double equal to a whole number counts as the same.
std::vector<std::string> ExactRows(platform::Recordset rows);

}  // namespace stockbook::testing
