// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "databases/dialect/dialect.h"
#include "databases/execution/interruption.h"
#include "databases/execution/readable_tables.h"

namespace stockbook::databases {

// What the connection string of a database behind a driver says: Provider=Odbc with Driver={…} or DSN=…, and whatever
// else the driver understands, which is passed on as it is written. Timeout=SECONDS is the time that the statements of
// one moment may take together; Tables=A,B is what may be read beside the tables of a journal.
struct OdbcSettings {
  std::string for_driver;
  std::string shown;     // the whole string without its passwords
  std::string password;  // to be left out of what the driver says
  std::optional<Interruption::Clock::duration> time_limit;
  std::string tables;
  Dialect dialect = Dialect::kDesktop;
  bool joins_ampersand = true;  // the server's `& ''` joins texts; AmpersandJoins=0 leaves it to the server
};

// Throws platform::Error when something is missing or means nothing.
OdbcSettings ReadOdbcSettings(std::string_view connection_string);

}  // namespace stockbook::databases
