// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "sheet/outline/row_states.h"
#include "sheet/store/run_tree.h"

namespace stockbook::sheet {

// The positions of the rows at one scale, in device pixels from the top of the unscrolled sheet; rows that are not
// shown have height 0. It borrows the row states and follows their changes. Queries are O(log runs), and so is a change
// of a run of rows. After a change of all rows the next query rebuilds the axis in O(runs).
class RowAxis final : private RowStatesWatcher {
 public:
  RowAxis(const RowStates& states, double scale);
  ~RowAxis() override;
  RowAxis(const RowAxis&) = delete;
  RowAxis& operator=(const RowAxis&) = delete;

  const RowStates& states() const { return states_; }
  double scale() const { return scale_; }
  void SetScale(double scale);

  int64_t Count() const { return states_.Rows(); }
  int64_t Top(int64_t row) const { return Runs().Before(row); }
  int64_t Height(int64_t row) const;
  // The height of a row in that state.
  int32_t HeightOf(const RowState& state) const;
  int64_t Total() const { return Runs().Total(); }
  // The shown row at the pixel, or Count() after the last one; pixels above row 0 give the first shown row.
  int64_t RowAt(int64_t pixel) const;

  // The heights agree with the row states; O(runs).
  bool CheckInvariants() const;
  size_t MemoryBytes() const { return runs_.MemoryBytes(); }

 private:
  // Runs of rows of the same height.
  struct Traits {
    using Value = int32_t;
    using Summary = int64_t;
    static int64_t Of(int32_t height, int64_t count) { return height * count; }
    static int64_t Combine(int64_t left, int64_t right) { return left + right; }
    static int32_t Advance(int32_t height, int64_t) { return height; }
    static bool Continues(int32_t height, int64_t, int32_t next) { return height == next; }
  };
  using HeightRuns = RunTree<Traits>;

  void RowsInserted(int64_t row, int64_t count) override;
  void RowsRemoved(int64_t row, int64_t count) override;
  void RowsUpdated(int64_t first, int64_t last) override;
  void AllRowsChanged() override { valid_ = false; }
  void StatesGone() override { states_gone_ = true; }

  // Makes a change of the runs; the next query rebuilds them if it fails.
  template <typename Change>
  void Follow(Change change) {
    if (!valid_) return;
    try {
      change();
    } catch (...) {
      valid_ = false;
    }
  }
  const HeightRuns& Runs() const;

  const RowStates& states_;
  bool states_gone_ = false;  // all that is left to do is to destroy the axis
  double scale_;
  mutable HeightRuns runs_;
  mutable bool valid_ = false;
};

}  // namespace stockbook::sheet
