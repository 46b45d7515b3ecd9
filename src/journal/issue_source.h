// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "stockbook/platform/connection.h"

namespace stockbook::journal {

// Describes where the stock of an issue line came from, read from the database by the line's `OtherID`: a positive one
// is the line of a receipt, a negative one the opening stock of a month. "" for 0, without a query, and without a
// connection. Throws platform::Error when the query fails or finds nothing.
std::string IssueSource(platform::Connection* connection, int64_t other_id);

}  // namespace stockbook::journal
