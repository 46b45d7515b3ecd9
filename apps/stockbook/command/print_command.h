// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/command/command_line_dispatch.h"

namespace stockbook::app {

// `stockbook print`: the journal as a PDF, without a display.
Command PrintCommand();

}  // namespace stockbook::app
