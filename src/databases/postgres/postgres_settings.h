// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "databases/execution/interruption.h"
#include "databases/execution/readable_tables.h"

namespace stockbook::databases {

// What the connection string of a PostgreSQL server says: Provider=Postgres;Host=…;Port=…;Database=…;User=…;Password=…;
// Schema=…, where the tables are, the role's own search path unless it is given; Timeout=SECONDS, the time that
// connecting, and then the statements of one moment, may take, 60 unless it is given and without end if it is 0;
// Tables=A,B, what may be read beside the tables of a journal. Every other setting is libpq's own, by libpq's name.
struct PostgresSettings {
  std::vector<std::pair<std::string, std::string>> parameters;  // of libpq, passwords among them
  std::string server;                                           // for messages: host, port and database
  std::string schema;                                           // empty: the role's own search path
  std::string shown;                                            // the connection string without its passwords
  std::optional<Interruption::Clock::duration> time_limit;
  ReadableTables tables;
};

// Throws platform::Error when a setting means nothing.
PostgresSettings ReadPostgresSettings(std::string_view connection_string);

}  // namespace stockbook::databases
