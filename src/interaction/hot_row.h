// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "grid/row_colours.h"
#include "platform/grid.h"

namespace stockbook::interaction {

// The current row in colours of its own. A row that becomes hot is read first, and what was read is what it gets back:
// the colours of its scrolling cells for all of it, those of its frozen cells for the frozen columns. Rows that were
// never hot are never touched. A row is found again, by the record nearest to it, wherever rows that came or went have
// moved it.
class HotRow {
 public:
  explicit HotRow(platform::Grid& grid) : grid_(grid) {}

  // A data row becomes the hot one, in place of another; other rows are left alone.
  void Enter(int row, platform::Colour back, platform::Colour fore);
  // The hot row, if there is one, gets its colours back.
  void Leave();
  // The rows are others now.
  void Forget() { is_hot_ = false; }
  // The hot row where it is now, or -1.
  int row() const;

 private:
  void Remember(int row);

  platform::Grid& grid_;
  grid::RowColours own_;
  bool is_hot_ = false;
  int row_ = -1;
  int64_t record_ = -1;  // the record nearest to the row, so many rows above it
  int behind_record_ = 0;
  int frozen_cols_ = 0;  // when the colours were read
};

}  // namespace stockbook::interaction
