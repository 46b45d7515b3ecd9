// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "stockbook/platform/connection.h"

namespace stockbook::app {

// Throws platform::Error, which names the missing tables, unless the database has all those without which no journal
// can be shown; balances and classes may be missing. `name` is what messages call it. Costs one statement a table;
// errors of the engine are passed on.
void RequireInventory(platform::Connection& connection, const std::string& name);

}  // namespace stockbook::app
