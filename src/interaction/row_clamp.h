// SPDX-License-Identifier: MIT
#pragma once

#include "platform/grid.h"
#include "platform/text_metrics.h"

namespace stockbook::interaction {

// What kind of row was given another height; each kind has one height for all of its rows.
enum class ResizedRow { kCaption, kNode, kLine };

struct ClampedHeight {
  ResizedRow kind = ResizedRow::kLine;
  int twips = 0;
};

// Brings the height of a row that the user has resized between one and three text lines (nodes: two and three, the
// caption row: one and a half and three), where a text line is that of the grid's font and two pixels.
ClampedHeight ClampRowHeight(platform::Grid& grid, const platform::TextMetrics& metrics, int row);

}  // namespace stockbook::interaction
