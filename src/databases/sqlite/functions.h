// SPDX-License-Identifier: MIT
#pragma once

#include "databases/sqlite/database.h"

namespace stockbook::databases {

// Makes the functions and aggregates that translated statements call known to the connection.
void RegisterFunctions(const Database& database);

}  // namespace stockbook::databases
