// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/command/command_line_dispatch.h"

namespace stockbook::app {

// `stockbook sql`: the statements of a journal as they are sent.
Command SqlCommand();

}  // namespace stockbook::app
