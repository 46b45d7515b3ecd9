// SPDX-License-Identifier: MIT
#include "sheet/input/line_step.h"

#include <algorithm>

#include "sheet/sheet.h"

namespace stockbook::sheet {
namespace {

constexpr int kLookedAt = 4;

}  // namespace

int LineStep(const Sheet& sheet) {
  const RowHeights& heights = sheet.states().heights();
  const int first = sheet.FixedRows();
  const int last = std::min(first + kLookedAt, sheet.Rows());
  int twips = 0;
  for (int row = first; row < last; ++row) {
    if (const int height = sheet.RowHeight(row); twips == 0 || height < twips) twips = height;
  }
  return static_cast<int>(std::max<int64_t>(1, RowHeights::ToPixels(twips, heights.pixels_per_twip)));
}

}  // namespace stockbook::sheet
