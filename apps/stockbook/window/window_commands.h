// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/command/command_line_dispatch.h"

namespace stockbook::app {

// `stockbook open`: the window.
Command OpenCommand();

// `stockbook print`: the journal as a PDF, without a display.
Command PrintCommand();

// `stockbook render`: the window's picture, without a display.
Command RenderCommand();

}  // namespace stockbook::app
