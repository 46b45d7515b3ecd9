// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace stockbook::app {

// Recomputes all four balance tables of an inventory from its lines, without the code that wrote them, and compares
// every row exactly: what was carried forward, received and issued, and the unit price. Reports differences as failures
// of the running test. Returns how many rows were compared.
int64_t CheckBalances(const std::string& path);

}  // namespace stockbook::app
