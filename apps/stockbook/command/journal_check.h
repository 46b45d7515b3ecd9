// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "stockbook/control/stockbook.h"
#include "stockbook/platform/connection.h"

namespace stockbook::app {

// The tables that every inventory has, apart from those of classes, and that cannot be read from this database; in the
// order of TableName.
std::vector<std::string> MissingTables(platform::Connection& connection);

// Throws platform::Error that names the missing tables, if there are any. `name` is what messages call the database.
void CheckTables(platform::Connection& connection, const std::string& name);

// Throws platform::Error if a product is given (above 0) and its number is not among the products. Where there is no
// table of products nothing is said.
void CheckProduct(platform::Connection& connection, int32_t product, const std::string& name);
// The same of a loaded journal without lines, and nothing of one with some.
void CheckSubject(control::Stockbook& control, int32_t product, const std::string& name);

}  // namespace stockbook::app
