// SPDX-License-Identifier: MIT
#include "databases/execution/readable_tables.h"

#include "base/text.h"
#include "databases/inventory/inventory_schema.h"

namespace stockbook::databases {
namespace {

// Where journals of products would look for them; no inventory has it.
constexpr std::string_view kProductData = "商品资料";

}  // namespace

ReadableTables::ReadableTables(std::string_view more) {
  names_.insert(std::string(kProductData));
  for (size_t table = 0; table < kTableCount; ++table)
    names_.insert(base::AsciiLower(InventoryTableOf(static_cast<TableName>(table)).name));
  for (const std::string_view piece : base::Split(more, ',')) {
    const std::string_view name = base::TrimBlanks(piece);
    all_ = all_ || name == "*";
    if (!name.empty()) names_.insert(base::AsciiLower(name));
  }
}

bool ReadableTables::Contains(std::string_view name) const {
  const std::string lower = base::AsciiLower(name);
  return !lower.starts_with("sqlite_") && (all_ || names_.contains(lower));
}

}  // namespace stockbook::databases
