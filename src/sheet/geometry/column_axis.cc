// SPDX-License-Identifier: MIT
#include "sheet/geometry/column_axis.h"

#include <algorithm>

namespace stockbook::sheet {

ColumnAxis::ColumnAxis(const std::vector<int>& widths_px) {
  edges_.reserve(widths_px.size() + 1);
  edges_.push_back(0);
  for (const int width : widths_px) edges_.push_back(edges_.back() + width);
}

int ColumnAxis::ColumnAt(int64_t pixel) const {
  // The first right edge beyond the pixel belongs to a column that is not hidden.
  const auto edge = std::upper_bound(edges_.begin() + 1, edges_.end(), std::max<int64_t>(pixel, 0));
  return static_cast<int>(edge - edges_.begin()) - 1;
}

bool ColumnAxis::CheckInvariants() const { return edges_.front() == 0 && std::is_sorted(edges_.begin(), edges_.end()); }

}  // namespace stockbook::sheet
