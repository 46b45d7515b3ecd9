// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace stockbook::databases {

// A column as an embedded database declares it, and what it means. Dates are ISO text and money is exact decimal text;
// their declared types say so but have text affinity, so that money is never converted to a double.
struct InventoryColumn {
  std::string_view name;
  std::string_view type;
  std::string_view chinese;
  std::string_view english;
};

// A table, what its rows are, and the columns that tell them apart.
struct InventoryTable {
  std::string_view name;
  std::span<const InventoryColumn> columns;
  std::string_view chinese;
  std::string_view english;
  std::string_view keys;  // with a comma and a blank between them
};

// The tables of an inventory, in the order that InventoryTableOf indexes: every one that a journal reads.
enum class TableName {
  ReceiptBills,
  IssueBills,
  ReceiptLines,
  IssueLines,
  Depots,
  Suppliers,
  Customers,
  Projects,
  Products,
  ProductClasses,
  SupplierClasses,
  CustomerClasses,
  ProjectClasses,
  Periods,
  DepotBalances,
  SupplierBalances,
  CustomerBalances,
  ProjectBalances,
};
inline constexpr size_t kTableCount = static_cast<size_t>(TableName::ProjectBalances) + 1;

const InventoryTable& InventoryTableOf(TableName name);
// Ignoring ASCII case; nullptr for a table that no inventory has.
const InventoryTable* FindInventoryTable(std::string_view name);

// The declared type of a key.
inline constexpr std::string_view kKeyColumn = "INTEGER PRIMARY KEY";

// CREATE TABLE and the INSERT with one parameter per column, in the columns' order.
std::string CreateStatement(const InventoryTable& table);
std::string InsertStatement(const InventoryTable& table);

// An index for the columns that journals, balances and header look-ups select by.
struct InventoryIndex {
  TableName table;
  std::string_view suffix;   // of its name, behind the table's
  std::string_view columns;  // with a comma and a blank between them
};
std::span<const InventoryIndex> InventoryIndexes();
std::string CreateStatement(const InventoryIndex& index);

}  // namespace stockbook::databases
