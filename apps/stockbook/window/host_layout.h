// SPDX-License-Identifier: MIT
#pragma once

#include "platform/grid.h"

namespace stockbook::app {

// What this host changes of the control's column layout, each time that the control has laid the columns out.
void RefineLayout(platform::Grid& grid);

}  // namespace stockbook::app
