// SPDX-License-Identifier: MIT
#pragma once

#include "databases/database_file.h"
#include "support/postgres_server.h"

namespace stockbook::testing {

// The tables of a file of SQLite on a server, with the server's own types for money, dates, numbers and texts.
void CopyToPostgres(const DatabaseFile& file, const PostgresServer& server);

}  // namespace stockbook::testing
