// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string_view>

namespace stockbook::app {

// What the names of the files end with that a database keeps beside itself; what they hold belongs to it.
inline constexpr std::array<std::string_view, 3> kDatabaseCompanions = {"-journal", "-wal", "-shm"};

}  // namespace stockbook::app
