// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/test_folder.h"

struct sqlite3;

namespace stockbook::app {

using testing::Outcome;

// A test with a folder of its own, which runs the commands that need no toolkit in the test's process.
class InventoryTest : public ::testing::Test, protected testing::TestFolder {
 protected:
  Outcome RunArguments(const std::vector<std::string>& arguments, const std::string& input = {}) const;
  // Changes a file in SQLite's own language.
  static void Change(const std::string& path, const std::string& sql);
};

// An inventory opened for reading, with rows as texts; a null is "NULL".
class OpenedInventory {
 public:
  explicit OpenedInventory(const std::string& path);
  ~OpenedInventory();
  OpenedInventory(const OpenedInventory&) = delete;
  OpenedInventory& operator=(const OpenedInventory&) = delete;

  std::vector<std::vector<std::string>> Rows(const std::string& sql) const;
  // The rows, their values joined by "|".
  std::vector<std::string> Lines(const std::string& sql) const;
  std::string One(const std::string& sql) const;

 private:
  sqlite3* database_ = nullptr;
};

}  // namespace stockbook::app
