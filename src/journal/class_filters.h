// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "base/journal_type.h"
#include "platform/connection.h"

namespace stockbook::journal {

// The members of a class as a list of keys, "12,15,31", in the order of the database; "" when there are none. One query
// each. An error ends the list where it is. Class codes are inserted without escaping: connections run a single reading
// statement per call, so a code can break its own query but do nothing else.

// Suppliers (supplier journal) or customers (any other) whose class code begins with `code`, sub-classes included.
// Queries even for an empty code.
std::string PartnerKeyList(platform::Connection* connection, base::tqJournalTypeContants type, std::string_view code);
// Projects of exactly this class. The empty code gives "" without a query; so do the next two.
std::string ProjectKeyList(platform::Connection* connection, std::string_view code);
// Suppliers whose class code begins with `code`.
std::string SupplierKeyList(platform::Connection* connection, std::string_view code);
// Customers whose class code begins with `code`.
std::string CustomerKeyList(platform::Connection* connection, std::string_view code);

}  // namespace stockbook::journal
