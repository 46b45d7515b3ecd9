// SPDX-License-Identifier: MIT
#pragma once

#include "databases/sqlite/database.h"

namespace stockbook::databases {

// Makes the collation of translated statements, kTextCollation, known to the connection. Unlike SQLite's own NOCASE it
// does not end at a NUL.
void RegisterTextCollation(const Database& database);

}  // namespace stockbook::databases
