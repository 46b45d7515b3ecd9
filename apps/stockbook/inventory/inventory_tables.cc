// SPDX-License-Identifier: MIT
#include "stockbook/inventory/inventory_tables.h"

#include <array>
#include <memory>
#include <string_view>
#include <vector>

#include "stockbook/inventory/inventory_schema.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

constexpr std::array kNeededTables = {
    TableName::ReceiptBills, TableName::IssueBills, TableName::ReceiptLines, TableName::IssueLines, TableName::Depots,
    TableName::Suppliers,    TableName::Customers,  TableName::Projects,     TableName::Products,   TableName::Periods};

bool HasTable(platform::Connection& connection, std::string_view table) {
  try {
    connection.Execute("Select Top 1 * From " + std::string(table));
    return true;
  } catch (const platform::Error& error) {
    if (error.IsOfEngine()) throw;
    return false;
  }
}

std::vector<std::string> TablesMissingIn(platform::Connection& connection) {
  const std::unique_ptr<platform::Moment> moment = connection.ReadAsOfOneMoment();
  std::vector<std::string> missing;
  for (const TableName name : kNeededTables) {
    const std::string_view table = InventoryTableOf(name).name;
    if (!HasTable(connection, table)) missing.emplace_back(table);
  }
  return missing;
}

}  // namespace

void RequireInventory(platform::Connection& connection, const std::string& name) {
  const std::vector<std::string> missing = TablesMissingIn(connection);
  if (missing.empty()) return;
  std::string list;
  for (const std::string& table : missing) list += (list.empty() ? "" : "、") + table;
  const bool has_any = missing.size() < kNeededTables.size();
  throw platform::Error("open", has_any ? "“" + name + "”缺少库存的表：" + list + "；请从备份恢复，或打开另一个库存。"
                                        : "“" + name + "”不是库存，其中没有库存的表（" + list +
                                              "）；请打开另一个数据库，或用 stockbook import 建立库存。");
}

}  // namespace stockbook::app
