// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "stockbook/inventory/inventory_schema.h"

namespace stockbook::app {

// Of the balances of partners and projects; written for other programs, never read.
inline constexpr std::string_view kUnreadColumn = "SumIssAccount";

// The column that must be unique and a whole number, "" where a table has none.
std::string_view NumberKeyOf(TableName table);
// What tells the rows of a table apart.
std::vector<std::string_view> IdentifyingColumns(TableName table);

// What a column of whole numbers refers to. 0 and null refer to nothing, which only some columns may do.
struct InventoryReference {
  TableName table;
  std::string_view column;
  TableName target;
  bool required;
};
std::span<const InventoryReference> InventoryReferences();

}  // namespace stockbook::app
