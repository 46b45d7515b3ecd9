// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "databases/inventory/inventory_schema.h"

namespace stockbook::databases {

// What a table is called by whoever gives its rows as structs: the function, and the member that tells them apart,
// which is empty where rows need no key.
struct RowNames {
  std::string_view function;
  std::string_view key;
};
RowNames NamesOf(TableName table);

}  // namespace stockbook::databases
