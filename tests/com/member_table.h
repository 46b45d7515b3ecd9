// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace stockbook::testing {

// What hosts have been promised, written down by hand and not made from the type library: the functions of `_Stockbook`
// in their order, as LibraryDump writes them.
std::vector<std::string> ExpectedMembers();

// The events of `__Stockbook`.
std::vector<std::string> ExpectedEvents();

}  // namespace stockbook::testing
