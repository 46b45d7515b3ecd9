// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "stockbook/platform/grid_types.h"

namespace stockbook::com {

// A colour as a host writes it: one that stands for a colour of the system becomes what the system shows now.
platform::Colour PlainColour(uint32_t given);

}  // namespace stockbook::com
