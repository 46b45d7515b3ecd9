// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/command/command_line_dispatch.h"

namespace stockbook::app {

// `stockbook sample`: a made-up inventory to look at and to measure with.
Command SampleCommand();

}  // namespace stockbook::app
