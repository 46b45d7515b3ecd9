// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "stockbook/platform/connection.h"

namespace stockbook::journal {

// The spellings of the two SQL dialects. The server dialect is used when the connection string contains "SQL" (upper
// case, anywhere), the desktop dialect otherwise; this is decided at every use. A null connection throws
// platform::Error.
bool IsSqlServerConnection(const platform::Connection* connection);

// Bill date, type and number as one text. The server text has no blank between date and type, the desktop one has.
std::string BillNoExpr(const platform::Connection* connection);
// A label such as 2004年03月 (March 2004) from a year and a month column.
std::string PeriodLabelExpr(const platform::Connection* connection, std::string_view year, std::string_view month);
// A date from year, month and day columns.
std::string BillDateExpr(const platform::Connection* connection, std::string_view year, std::string_view month,
                         std::string_view day);
// The label of a balance row's period; the server dialect has none.
std::string BalancePeriodLabelExpr(const platform::Connection* connection);

// Drops a table of the host's database and ignores every error. Loading a journal never calls it.
void RemoveTable(platform::Connection* connection, std::string_view table);

}  // namespace stockbook::journal
