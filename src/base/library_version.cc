// SPDX-License-Identifier: MIT
#include "stockbook/base/library_version.h"

#include "stockbook/version.h"

namespace stockbook::base {

const char* LibraryVersion() { return STOCKBOOK_VERSION_STRING; }

}  // namespace stockbook::base
