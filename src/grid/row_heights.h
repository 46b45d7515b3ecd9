// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "stockbook/platform/grid_busy.h"
#include "stockbook/platform/grid_table.h"
#include "stockbook/platform/text_metrics.h"

namespace stockbook::grid {

// Heights in twips, which a layout derives from the grid's font.
struct RowSizes {
  int data = 0;   // one line of text plus four pixels
  int title = 0;  // two lines of text plus four pixels, for two-line captions
  int sum = 0;    // twice the data height, for two-line totals
};

// Gives row 0 the title height and every other row the data height. The caller sets the height of the total rows.
RowSizes SizeRows(platform::GridRows& grid, const platform::TextMetrics& metrics, const platform::Font& font);

// Gives the height to every outline node from the first data row on.
void SetSumRowHeight(platform::GridRows& grid, int twips);

// Reads back the heights in use: those of row 0, the first ordinary data row and the first subtotal row. Without a
// subtotal row its height is that of the ordinary row.
RowSizes ReadRowSizes(const platform::GridRows& grid);

// Sets the font of the existing data cells in the columns of the "|"-separated list. Unknown keys and fixed columns are
// skipped; an empty name means "Arial". Header cells keep their font. Redraw is off meanwhile.
void SetColumnsFont(platform::GridTable& grid, platform::GridBusy& busy, std::string_view keys,
                    std::string_view font_name);

}  // namespace stockbook::grid
