// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/base/api.h"

namespace stockbook::base {

// The version of the library that the program runs with, as "1.2.3"; STOCKBOOK_VERSION_STRING of stockbook/version.h is
// the one that it was compiled with.
STOCKBOOK_API const char* LibraryVersion();

}  // namespace stockbook::base
