// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/command/command_line_dispatch.h"

namespace stockbook::app {

Command PlotCommand();

}  // namespace stockbook::app
