// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "stockbook/platform/error.h"

namespace stockbook::databases {

// What an SQLSTATE says failed; a server that cannot be reached has none.
platform::ErrorKind KindOfSqlState(std::string_view sql_state);

// The error of a statement that the server refused with an SQLSTATE; `detail` is the server's own message. Where the
// server quotes a value that it read, the message does not.
platform::Error ErrorOfSqlState(const char* operation, std::string_view sql_state, std::string_view detail);

// The error of a server, called as in PostgresSettings, that refused a connection with an SQLSTATE, or for none if it
// could not be reached; `detail` is libpq's own message.
platform::Error ErrorOfConnecting(const std::string& server, std::string_view sql_state, std::string_view detail);

// The last SQLSTATE in libpq's message of a failed connection, which was asked to give nothing else ("FATAL:  28P01"),
// or nothing.
std::string SqlStateIn(std::string_view message);

}  // namespace stockbook::databases
