// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/platform/connection.h"

namespace stockbook::databases {

// Opens the database that a connection string names by its Provider: Stockbook.Embedded (the default), and
// Stockbook.Desktop, Postgres and Odbc where their libraries were at hand when this was built. Throws platform::Error
// with one sentence for the user when it cannot be opened, or says what the build lacks. To be linked from the target
// Stockbook::Databases; Stockbook::Sqlite, Postgres, Odbc and Desktop are the same where that database was built in.
STOCKBOOK_API std::unique_ptr<platform::Connection> OpenConnection(std::string_view connection_string);

// The providers that this build can open, as they are written in a connection string.
STOCKBOOK_API std::vector<std::string> BuiltProviders();

}  // namespace stockbook::databases
