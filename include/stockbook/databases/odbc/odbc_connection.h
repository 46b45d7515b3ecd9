// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

#include "stockbook/base/api.h"
#include "stockbook/platform/connection.h"

namespace stockbook::databases {

// A database behind an ODBC driver, read only: Provider=Odbc;Driver={…};… or Provider=Odbc;DSN=…;…, and what
// OdbcSettings tells. Understands the desktop dialect, or the server dialect when the string, passwords aside, contains
// "SQL", which the names of many drivers do. A moment is a transaction, where the driver has them; when its connection
// breaks, what is left of the moment fails, and the next statement after it connects again. Throws platform::Error when
// it cannot connect.
STOCKBOOK_API std::unique_ptr<platform::Connection> OpenOdbc(std::string_view connection_string);

}  // namespace stockbook::databases
