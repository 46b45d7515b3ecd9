// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>

namespace stockbook::sheet {

// Maps 64-bit positions to a scroll bar of 31 bits: one to one while they fit, in coarser steps beyond. The ends of
// both scales map to each other exactly. A plain value.
class BarScale {
 public:
  BarScale() = default;
  explicit BarScale(int64_t most) : most_(std::max<int64_t>(most, 0)), step_(most_ / kMostOnBar + 1) {}

  int MostOnBar() const { return static_cast<int>(most_ / step_ + (most_ % step_ != 0 ? 1 : 0)); }
  int ToBar(int64_t position) const {
    if (position >= most_) return MostOnBar();
    return static_cast<int>(std::max<int64_t>(position, 0) / step_);
  }
  int64_t FromBar(int value) const { return value >= MostOnBar() ? most_ : value * step_; }
  // Converts a length of the contents to steps of the bar, at least one.
  int Length(int64_t length) const { return static_cast<int>(std::max<int64_t>(length / step_, 1)); }

 private:
  static constexpr int64_t kMostOnBar = 1 << 30;

  int64_t most_ = 0;
  int64_t step_ = 1;
};

}  // namespace stockbook::sheet
