// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/command/command_line_dispatch.h"

namespace stockbook::app {

// `stockbook render`: the window's picture, without a display.
Command RenderCommand();

}  // namespace stockbook::app
