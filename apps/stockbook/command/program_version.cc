// SPDX-License-Identifier: MIT
#include "stockbook/command/program_version.h"

namespace stockbook::app {

// Of all sources only this one is compiled anew with another version.
std::string_view ProgramVersion() { return STOCKBOOK_VERSION; }

}  // namespace stockbook::app
