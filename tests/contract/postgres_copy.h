// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "databases/database_file.h"

namespace stockbook::testing {

// Statements that make the tables of the file, with the types that a server's host would give them and their primary
// keys, and all their rows in the same order.
std::string PostgresCopyOf(const DatabaseFile& file);

}  // namespace stockbook::testing
