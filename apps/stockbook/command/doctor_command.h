// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/command/command_line_dispatch.h"

namespace stockbook::app {

// `stockbook doctor`: examines an inventory.
Command DoctorCommand();

}  // namespace stockbook::app
