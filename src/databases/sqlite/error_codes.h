// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "stockbook/platform/error.h"

namespace stockbook::databases {

// What a result code of SQLite, extended or not, says failed.
platform::ErrorKind KindOfCode(int code);

// The message for the user; `detail` is SQLite's own.
std::string ExplainCode(int code, const std::string& file, const char* detail);

}  // namespace stockbook::databases
