// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace stockbook::com {

// A connection string (Key=Value;…, values quoted where they need it) without its passwords. Everything else stays as
// it is, letter by letter; a text that is no connection string does, too.
std::string WithoutPasswords(std::string_view connection_string);

}  // namespace stockbook::com
