// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "stockbook/platform/connection.h"

namespace stockbook::databases {

// Which database's language a statement is written in: the desktop one (`&`, TOP, Left, Format, #dates#) or the
// server one (`+`, Convert, CAST, CASE).
enum class Dialect { kDesktop, kServer };

inline Dialect DialectOf(std::string_view connection_string) {
  return platform::IsServerDialect(connection_string) ? Dialect::kServer : Dialect::kDesktop;
}

}  // namespace stockbook::databases
