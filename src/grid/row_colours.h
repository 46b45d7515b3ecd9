// SPDX-License-Identifier: MIT
#pragma once

#include "platform/grid.h"

namespace stockbook::grid {

// The colours that a row has by itself: of its scrolling cells and of its frozen ones. They are what a row painted hot
// gets back.
struct RowColours {
  platform::Colour normal_back = 0;
  platform::Colour normal_fore = 0;
  platform::Colour frozen_back = 0;
  platform::Colour frozen_fore = 0;

  bool operator==(const RowColours&) const = default;
};

// Reads the colours of a row (below 0: the current row) from the last frozen column and the one behind it. Changes
// nothing else; an error, or a row or column that is not there, leaves the colours as they were.
void CaptureRowColours(const platform::Grid& grid, int row, RowColours& colours);

}  // namespace stockbook::grid
