// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "stockbook/platform/grid_types.h"
#include "stockbook/platform/picture.h"

namespace stockbook::control {

// What the control keeps of one of its frames; the toolkit draws it.
struct Container {
  std::string caption;           // of C1EHeader alone, followed by three blanks
  platform::PictureRef picture;  // of C1EHeader alone
  int16_t border_width = 0;      // pixels
  int16_t child_spacing = 0;     // pixels
  platform::Colour back_color = 0x00FFFFFF;
};

}  // namespace stockbook::control
