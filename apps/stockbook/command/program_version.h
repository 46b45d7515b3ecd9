// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace stockbook::app {

// The version of the project: "0.1.0".
std::string_view ProgramVersion();

}  // namespace stockbook::app
