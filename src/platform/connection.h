// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "platform/recordset.h"

namespace stockbook::platform {

// The option of Connection::Execute that lets the provider decide what kind of command the text is.
inline constexpr int kExecuteUnspecified = -1;

// The host's database, opened by the host and read-only. Execute runs one statement and returns all its rows; it throws
// Error with the database's own message when the statement fails. What the texts mean is the connection's work: it is
// sent the desktop dialect or, where IsServerDialect holds for its ConnectionString, the server dialect.
class Connection {
 public:
  virtual ~Connection() = default;
  virtual std::string ConnectionString() const = 0;
  virtual Recordset Execute(std::string_view statement, int options = kExecuteUnspecified) = 0;
};

// Whether a connection of this string is sent the server dialect: "SQL", in upper case, occurs anywhere in it, even in
// the name of a file.
inline bool IsServerDialect(std::string_view connection_string) {
  return connection_string.find("SQL") != std::string_view::npos;
}

}  // namespace stockbook::platform
