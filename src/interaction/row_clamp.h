// SPDX-License-Identifier: MIT
#pragma once

#include "platform/grid_rows.h"
#include "platform/text_metrics.h"

namespace stockbook::interaction {

// What kind of row was given another height; each kind has one height for all of its rows.
enum class ResizedRow { kCaption, kNode, kLine };

struct ClampedHeight {
  ResizedRow kind = ResizedRow::kLine;
  int twips = 0;
};

// Brings the height of a row that the user has resized between one and three text lines (nodes: two and three, the
// caption row: one and a half and three), where a text line is one of the font and two pixels.
ClampedHeight ClampRowHeight(platform::GridRows& grid, const platform::TextMetrics& metrics, const platform::Font& font,
                             int row);

}  // namespace stockbook::interaction
