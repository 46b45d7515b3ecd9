// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/command/command_line_dispatch.h"

namespace stockbook::app {

// `stockbook open`: the window.
Command OpenCommand();

}  // namespace stockbook::app
