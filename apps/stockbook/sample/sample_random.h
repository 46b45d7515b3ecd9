// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace stockbook::app {

// A small generator of pseudo-random numbers that gives the same sequence from the same seed on every machine, which
// the standard library's distributions do not. Whole numbers only. Not for secrets.
class SampleRandom {
 public:
  explicit SampleRandom(uint64_t seed) : state_(seed) {}

  uint64_t Next() {
    state_ += 0x9E3779B97F4A7C15u;
    uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
    return mixed ^ (mixed >> 31);
  }

  // A number of 0..count-1; the count is at least 1. Counts are small, so the bias of the remainder does not matter.
  int64_t Below(int64_t count) { return static_cast<int64_t>((Next() >> 1) % static_cast<uint64_t>(count)); }
  // A number of least..most.
  int64_t Between(int64_t least, int64_t most) { return least + Below(most - least + 1); }
  // True in `percent` of 100 cases.
  bool Chance(int percent) { return Below(100) < percent; }

  template <typename Sequence>
  const auto& Pick(const Sequence& sequence) {
    return sequence[static_cast<size_t>(Below(static_cast<int64_t>(sequence.size())))];
  }

 private:
  uint64_t state_;
};

}  // namespace stockbook::app
