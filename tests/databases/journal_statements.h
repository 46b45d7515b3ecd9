// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "databases/dialect/dialect.h"

namespace stockbook::testing {

// The statements exactly as the control sends them.
std::string MaterialJournal(databases::Dialect dialect, const std::string& where_product, const std::string& period);
// `where` follows the source: " Where (Recs.ksID = 5)" or, without it, what makes the statement malformed.
std::string SupplierJournal(databases::Dialect dialect, const std::string& where, const std::string& period);
std::string CustomerJournal(databases::Dialect dialect, const std::string& where, const std::string& period);
std::string ProjectJournal(databases::Dialect dialect, const std::string& condition, const std::string& period);

std::string DepotBalance(const std::string& product, const std::string& depot_condition, const std::string& period);
// `table` tqSuppBalance or tqCustBalance; `conditions` follow the source.
std::string PartnerBalance(const std::string& table, const std::string& conditions, const std::string& period);
std::string ProjectBalance(const std::string& product, const std::string& conditions);

}  // namespace stockbook::testing
