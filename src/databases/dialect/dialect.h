// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace stockbook::databases {

// Which database's language a statement is written in: the desktop one (`&`, TOP, Left, Format, #dates#) or the
// server one (`+`, Convert, CAST, CASE).
enum class Dialect { kDesktop, kServer };

// The server dialect when "SQL" stands anywhere in the connection string, case-sensitively; a file name counts too.
inline Dialect DialectOf(std::string_view connection_string) {
  return connection_string.find("SQL") != std::string_view::npos ? Dialect::kServer : Dialect::kDesktop;
}

}  // namespace stockbook::databases
