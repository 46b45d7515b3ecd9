// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "journal/inventory.h"
#include "stockbook/base/journal_type.h"

namespace stockbook::journal {

// The members of a class as a list of keys, "12,15,31", in the order of the database; "" when there are none. One query
// each. An error of the statement is told and ends the list where it is. A key is pasted into other statements, so one
// that is no whole number is left out, and told; a class of nothing but such keys gives the list "NULL", which no
// member matches, because the empty list would stand for everybody. Class codes are inserted without escaping:
// connections run a single reading statement per call, so a code can break its own query but do nothing else.

// Suppliers (supplier journal) or customers (any other) whose class code begins with `code`, sub-classes included.
// Queries even for an empty code.
std::string PartnerKeyList(const Inventory& inventory, base::tqJournalTypeContants type, std::string_view code);
// Projects of exactly this class. The empty code gives "" without a query; so do the next two.
std::string ProjectKeyList(const Inventory& inventory, std::string_view code);
// Suppliers whose class code begins with `code`.
std::string SupplierKeyList(const Inventory& inventory, std::string_view code);
// Customers whose class code begins with `code`.
std::string CustomerKeyList(const Inventory& inventory, std::string_view code);

}  // namespace stockbook::journal
