// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "platform/connection.h"

namespace stockbook::app {

// The tables without which no journal can be shown, of those that the inventory lacks; balances and classes may be
// missing. Costs one statement a table. Errors of the engine are passed on.
std::vector<std::string> MissingTables(platform::Connection& connection);

// Throws platform::Error, which names the missing tables, unless the database is an inventory. `name` is what messages
// call it.
void RequireInventory(platform::Connection& connection, const std::string& name);

}  // namespace stockbook::app
