// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/platform/grid_rows.h"
#include "stockbook/platform/text_metrics.h"

namespace stockbook::interaction {

// The kind of a resized row; all rows of a kind have the same height.
enum class ResizedRow { kCaption, kNode, kLine };

struct ClampedHeight {
  ResizedRow kind = ResizedRow::kLine;
  int twips = 0;
};

// Limits the height of a row that the user has resized to one to three lines (nodes two to three, the caption row one
// and a half to three), where a line is one line of text plus two pixels.
ClampedHeight ClampRowHeight(platform::GridRows& grid, const platform::TextMetrics& metrics, const platform::Font& font,
                             int row);

}  // namespace stockbook::interaction
