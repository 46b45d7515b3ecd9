// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "platform/grid.h"
#include "platform/text_metrics.h"

namespace stockbook::grid {

// Heights in twips as a layout sets them from the grid's font.
struct RowSizes {
  int data = 0;   // one text line and four pixels
  int title = 0;  // two text lines and four pixels, for two-line captions
  int sum = 0;    // twice the data height, for two-line totals
};

// Every row gets the data height, row 0 the title height; the total rows are the caller's.
RowSizes SizeRows(platform::Grid& grid, const platform::TextMetrics& metrics);

// Gives the height to every outline node from the first data row on.
void SetSumRowHeight(platform::Grid& grid, int twips);

// The heights that the grid really shows: row 0; of the data rows the first ordinary row and the first subtotal row,
// the latter the former where there is none.
RowSizes ReadRowSizes(const platform::Grid& grid);

// The font of the existing data cells of the columns in the "|"-separated list; unknown keys and fixed columns are
// skipped, an empty name means "Arial". Header cells keep theirs.
void SetColumnsFont(platform::Grid& grid, std::string_view keys, std::string_view font_name);

}  // namespace stockbook::grid
