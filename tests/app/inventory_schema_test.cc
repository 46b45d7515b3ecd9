// SPDX-License-Identifier: MIT
#include "stockbook/inventory/inventory_schema.h"

#include <gtest/gtest.h>

#include "databases/execution/readable_tables.h"

namespace stockbook::app {
namespace {

TEST(InventorySchema, HasOnlyTablesThatAConnectionMayRead) {
  const databases::ReadableTables tables;
  for (size_t index = 0; index < kTableCount; ++index) {
    const InventoryTable& table = InventoryTableOf(static_cast<TableName>(index));
    EXPECT_TRUE(tables.Contains(table.name)) << table.name;
  }
}

}  // namespace
}  // namespace stockbook::app
