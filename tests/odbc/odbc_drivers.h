// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace stockbook::testing {

// The libraries of ODBC drivers where Debian installs them, or nothing where they are not.
std::string SqliteOdbcDriver();
std::string PostgresOdbcDriver();
std::string TdsOdbcDriver();

// A file of SQLite through its driver; `more` are further settings.
std::string SqliteOdbcString(const std::string& file, const std::string& more = "");

}  // namespace stockbook::testing
