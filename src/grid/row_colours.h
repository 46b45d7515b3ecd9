// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/platform/grid_table.h"
#include "stockbook/platform/grid_view.h"

namespace stockbook::grid {

// The colours of a row before it was highlighted as the hot row: those of its scrolling cells and of its frozen ones.
// The row gets them back when it is no longer hot.
struct RowColours {
  platform::Colour normal_back = 0;
  platform::Colour normal_fore = 0;
  platform::Colour frozen_back = 0;
  platform::Colour frozen_fore = 0;

  bool operator==(const RowColours&) const = default;
};

// Reads the colours of a row (below 0: the current row of the view) from the last frozen column and the column after
// it. Changes nothing else; an error, or a row or column that does not exist, leaves the colours as they were.
void CaptureRowColours(const platform::GridTable& grid, const platform::GridView& view, int row, RowColours& colours);

}  // namespace stockbook::grid
