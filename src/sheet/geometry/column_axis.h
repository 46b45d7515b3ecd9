// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace stockbook::sheet {

// The positions of the columns, in device pixels from the left edge of the unscrolled sheet: prefix sums of their
// widths, with hidden columns of width 0. Finding a column is O(log columns).
class ColumnAxis {
 public:
  ColumnAxis() : edges_(1, 0) {}
  explicit ColumnAxis(const std::vector<int>& widths_px);

  int Count() const { return static_cast<int>(edges_.size()) - 1; }
  int64_t Left(int column) const { return edges_[static_cast<size_t>(column)]; }
  int64_t Width(int column) const { return Left(column + 1) - Left(column); }
  int64_t Total() const { return edges_.back(); }
  // The visible column at the pixel, or Count() after the last one.
  int ColumnAt(int64_t pixel) const;

  bool CheckInvariants() const;
  size_t MemoryBytes() const { return edges_.capacity() * sizeof(int64_t); }

 private:
  std::vector<int64_t> edges_;
};

}  // namespace stockbook::sheet
