// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/command/command_line_dispatch.h"

namespace stockbook::app {

// `stockbook import`: an inventory from a table of movements.
Command ImportCommand();

}  // namespace stockbook::app
