// SPDX-License-Identifier: MIT
#include "stockbook/command/journal_check.h"

#include "stockbook/inventory/inventory_schema.h"
#include "stockbook/platform/error.h"
#include "stockbook/platform/grid.h"
#include "stockbook/platform/recordset.h"

namespace stockbook::app {
namespace {

bool CanRead(platform::Connection& connection, const InventoryTable& table) {
  try {
    const std::string column(table.columns.front().name);
    connection.Execute("Select Top 1 " + column + " From " + std::string(table.name));
    return true;
  } catch (const platform::Error& error) {
    // What the engine cannot do says nothing of the table.
    if (error.IsOfEngine()) throw;
    return false;
  }
}

// Journals of a class alone read them.
bool HoldsClasses(TableName table) { return table >= TableName::ProductClasses && table <= TableName::ProjectClasses; }

}  // namespace

std::vector<std::string> MissingTables(platform::Connection& connection) {
  std::vector<std::string> missing;
  for (size_t index = 0; index < kTableCount; ++index) {
    const auto name = static_cast<TableName>(index);
    const InventoryTable& table = InventoryTableOf(name);
    if (!HoldsClasses(name) && !CanRead(connection, table)) missing.emplace_back(table.name);
  }
  return missing;
}

void CheckTables(platform::Connection& connection, const std::string& name) {
  const std::vector<std::string> missing = MissingTables(connection);
  if (missing.empty()) return;
  constexpr size_t kNeeded = kTableCount - 4;
  if (missing.size() == kNeeded) {
    throw platform::Error("open", "'" + name + "' is no inventory: it has none of its tables, such as " +
                                      missing.front() + "; name another database.");
  }
  std::string list;
  for (const std::string& table : missing) list.append(list.empty() ? "" : ", ").append(table);
  throw platform::Error("open", "The inventory '" + name + "' lacks " +
                                    (missing.size() == 1 ? "the table " : "the tables ") + list +
                                    "; put back a whole copy of it, or name another database.");
}

void CheckProduct(platform::Connection& connection, int32_t product, const std::string& name) {
  if (product <= 0) return;
  const std::string number = std::to_string(product);
  try {
    if (!connection.Execute("Select pdID From 商品设置 Where pdID=" + number).AtEnd()) return;
  } catch (const platform::Error& error) {
    if (error.IsOfEngine()) throw;
    return;
  }
  throw platform::Error(
      "export", "There is no product " + number + " in '" + name + "'; give the number of another one with --product.");
}

void CheckSubject(control::Stockbook& control, int32_t product, const std::string& name) {
  if (control.Grid().RecordCount() > 0 || control.Conn() == nullptr) return;
  CheckProduct(*control.Conn(), product, name);
}

}  // namespace stockbook::app
