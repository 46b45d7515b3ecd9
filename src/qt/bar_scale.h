// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>

namespace stockbook::qt {

// Positions of 64 bits on a scroll bar of 31: as they are while they fit, in coarser steps beyond. The ends of the two
// scales meet exactly. A plain value.
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
  // A length of the contents on the bar, at least one step of it.
  int Length(int64_t length) const { return static_cast<int>(std::max<int64_t>(length / step_, 1)); }

 private:
  static constexpr int64_t kMostOnBar = 1 << 30;

  int64_t most_ = 0;
  int64_t step_ = 1;
};

}  // namespace stockbook::qt
