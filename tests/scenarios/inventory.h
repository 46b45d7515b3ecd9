// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "databases/database_file.h"
#include "scenarios/scenario_file.h"

namespace stockbook::scenarios {

// The inventory of a scenario: a database file that the tables of its "Given" steps fill.
class Inventory {
 public:
  Inventory();
  // Throws std::runtime_error for unknown tables and columns.
  void Fill(const std::string& name, const Table& table);
  // "desktop" or "server".
  std::string ConnectionString(const std::string& dialect) const;

 private:
  void FillMovements(const std::string& name, const Table& table);

  testing::DatabaseFile file_;
  int next_bill_[2] = {1, 101};  // receipts, issues
  int next_line_[2] = {1, 101};
};

}  // namespace stockbook::scenarios
