// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;

namespace stockbook::app {

// The result of running the program: its exit code and its two outputs.
struct Outcome {
  int code = -1;
  std::string out;
  std::string err;
};

// A test with a folder of its own, which runs the commands `sample` and `import` in the test's process.
class InventoryTest : public ::testing::Test {
 protected:
  InventoryTest();
  ~InventoryTest() override;

  std::string PathOf(std::string_view name) const { return (folder_ / name).string(); }
  std::string Write(std::string_view name, std::string_view text) const;
  std::string ReadAll(const std::string& path) const;
  // The names in the folder, sorted.
  std::vector<std::string> Files() const;
  Outcome RunArguments(const std::vector<std::string>& arguments, const std::string& input = {}) const;

 private:
  std::filesystem::path folder_;
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
