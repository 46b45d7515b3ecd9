// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/command/command_line_dispatch.h"

namespace stockbook::app {

// `stockbook export`: the rows of a loaded journal as text.
Command ExportCommand();

}  // namespace stockbook::app
