// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace stockbook::app {

// Recomputes all four balance tables of an inventory from its lines, independently of the code that wrote them, and
// compares every row exactly: carried forward, received and issued, and the unit price. Reports differences as failures
// of the running test. Returns the number of rows compared.
int64_t CheckBalances(const std::string& path);

}  // namespace stockbook::app
