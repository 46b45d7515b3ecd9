// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace stockbook::testing {

// docs/schema.md: the tables of an inventory with their fields, and the statements that the control sends.
std::string SchemaPage();

}  // namespace stockbook::testing
