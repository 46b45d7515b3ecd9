// SPDX-License-Identifier: MIT
#include "stockbook/window/inventory_mark.h"

#include <sys/stat.h>

#include <array>

#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

// A log that holds nothing is one that reading made.
std::string StateOfFile(const std::string& path) {
  struct stat state {};
  if (stat(path.c_str(), &state) != 0 || state.st_size == 0) return "-";
  return std::to_string(state.st_size) + ":" + std::to_string(state.st_mtim.tv_sec) + "." +
         std::to_string(state.st_mtim.tv_nsec) + ":" + std::to_string(state.st_ino);
}

std::string NewestOf(platform::Connection& connection, const std::string& key, const std::string& table) {
  const platform::Recordset rows =
      connection.Execute("Select Top 1 " + key + " From " + table + " Order By " + key + " Desc");
  return rows.AtEnd() ? "-" : rows.FieldValue(std::size_t{0}).Text();
}

}  // namespace

std::string IdentityOfFile(const std::string& path) {
  struct stat state {};
  if (stat(path.c_str(), &state) != 0) return {};
  return std::to_string(state.st_dev) + ":" + std::to_string(state.st_ino);
}

std::string InventoryMark::Read(platform::Connection* connection) const {
  if (IsOfFile()) return StateOfFile(file_) + " " + StateOfFile(file_ + "-wal");
  if (connection == nullptr) return {};
  constexpr std::array kTables = {"入库记录", "出库记录"};
  constexpr std::array kBills = {"入库目录", "出库目录"};
  std::string mark;
  try {
    for (const char* table : kTables) mark += NewestOf(*connection, "RecID", table) + " ";
    for (const char* table : kBills) mark += NewestOf(*connection, "BillID", table) + " ";
  } catch (const platform::Error&) {
    return {};
  }
  return mark;
}

}  // namespace stockbook::app
