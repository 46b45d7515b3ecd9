// SPDX-License-Identifier: MIT
#pragma once

#include "databases/sqlite/database.h"

namespace stockbook::databases {

// Makes the functions, aggregates and the collation that translated statements use known to the connection.
void RegisterFunctions(const Database& database);

}  // namespace stockbook::databases
