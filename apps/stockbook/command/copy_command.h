// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/command/command_line_dispatch.h"

namespace stockbook::app {

// `stockbook copy`: an inventory from any database into a new one.
Command CopyCommand();

}  // namespace stockbook::app
