// SPDX-License-Identifier: MIT
#include "sheet/input/line_step.h"

#include <algorithm>

#include "sheet/geometry/scale.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::sheet {
namespace {

constexpr int kLookedAt = 4;

}  // namespace

int LineStep(const View& view) {
  const Sheet& sheet = view.sheet();
  const int first = sheet.FixedRows();
  const int last = std::min(first + kLookedAt, sheet.Rows());
  int twips = 0;
  for (int row = first; row < last; ++row) {
    if (const int height = sheet.RowHeight(row); twips == 0 || height < twips) twips = height;
  }
  return static_cast<int>(std::max<int64_t>(1, ToPixels(twips, view.scale())));
}

}  // namespace stockbook::sheet
