// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

#include "stockbook/base/api.h"
#include "stockbook/platform/connection.h"

namespace stockbook::databases {

// An inventory on a PostgreSQL server: Provider=Postgres;Host=…;Database=…, and what PostgresSettings tells. It
// understands the desktop dialect, or the server dialect when the connection string, its passwords apart, contains
// "SQL". Read only, one SELECT per call, on one thread; Cancel alone may come from another. A moment is a transaction
// of repeatable reads, which holds off no writer. A connection that was lost between two moments is made again. Throws
// platform::Error when the server cannot be reached or refuses.
STOCKBOOK_API std::unique_ptr<platform::Connection> OpenPostgres(std::string_view connection_string);

}  // namespace stockbook::databases
