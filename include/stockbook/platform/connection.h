// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "stockbook/base/api.h"
#include "stockbook/platform/recordset.h"

namespace stockbook::platform {

// The option of Connection::Execute that lets the provider decide what kind of command the text is.
inline constexpr int kExecuteUnspecified = -1;

// While one lives, every statement of its connection reads the database as it was when the moment began.
class STOCKBOOK_API Moment {
 public:
  Moment() = default;
  Moment(const Moment&) = delete;
  Moment& operator=(const Moment&) = delete;
  virtual ~Moment() = default;
};

// The host's database, opened by the host and read-only. Execute runs one statement and returns all its rows; it throws
// Error with the database's own message when the statement fails. Rows that the data would have but the connection had
// to leave out are remarks of the recordset, which a load tells the user. What the texts mean is the connection's work:
// it is sent the desktop dialect or, where IsServerDialect holds for its ConnectionString, the server dialect.
class STOCKBOOK_API Connection {
 public:
  virtual ~Connection() = default;
  // As it was opened, but never with a password in it.
  virtual std::string ConnectionString() const = 0;
  // All rows of one statement; `options` is kExecuteUnspecified wherever the control asks. Throws Error.
  virtual Recordset Execute(std::string_view statement, int options = kExecuteUnspecified) = 0;

  // Begins a moment, or joins the one that the connection is in: moments nest, and the outermost one decides. A
  // connection that cannot read several statements as of one moment says so by nullptr. Throws Error when it can and
  // fails, as on a database that another program holds. The connection outlives its moments.
  virtual std::unique_ptr<Moment> ReadAsOfOneMoment() = 0;

  // Stops the statement that is running, if there is one: it throws an Error of the kind kInterrupted. One of
  // the two functions that another thread may call. A connection that cannot stop anything does nothing.
  virtual void Cancel() {}

  // How many rows the statement that is running has read so far, or the last one had; 0 where nobody counts. They are
  // rows of tables, so that there may be more than the result will have. Another thread may call it, too.
  virtual std::size_t RowsRead() const { return 0; }
};

// Whether a connection of this string is sent the server dialect: "SQL", in upper case, occurs anywhere in it, even in
// the name of a file.
inline bool IsServerDialect(std::string_view connection_string) {
  return connection_string.find("SQL") != std::string_view::npos;
}

}  // namespace stockbook::platform
