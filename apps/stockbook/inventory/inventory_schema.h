// SPDX-License-Identifier: MIT
#pragma once

#include "databases/inventory/inventory_schema.h"

namespace stockbook::app {

// The tables of an inventory, which the host writes, imports, copies and examines.
using databases::CreateStatement;
using databases::InsertStatement;
using databases::InventoryColumn;
using databases::InventoryIndex;
using databases::InventoryIndexes;
using databases::InventoryTable;
using databases::InventoryTableOf;
using databases::kTableCount;
using databases::TableName;

}  // namespace stockbook::app
