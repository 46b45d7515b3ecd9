// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "base/scope_exit.h"
#include "grid/row_colours.h"
#include "platform/grid.h"

namespace stockbook::interaction {

// The current row in colours of its own. A row that becomes hot is read first, and what was read is what it gets back:
// the colours of its scrolling cells for all of it, those of its frozen cells for the frozen columns. Rows that were
// never hot are never touched. Wherever rows that came or went have moved it, a row is found again by the record
// nearest to it.
class HotRow {
 public:
  // Borrows all of it; the hot colours are read as they are at the time.
  HotRow(platform::Grid& grid, const platform::Colour& back, const platform::Colour& fore)
      : grid_(grid), back_(back), fore_(fore) {}

  // A data row becomes the hot one, in place of another; other rows are left alone.
  void Enter(int row);
  // The hot row, if there is one, gets its colours back.
  void Leave();
  // The rows are others now.
  void Forget() { is_hot_ = false; }

  // Until the returned guard goes, the row has its own colours; then, if it is still there, the hot ones of that time.
  // For what it is not to be seen in, or what changes its looks (a printed page, other colours).
  [[nodiscard]] auto SetAside() {
    return base::ScopeExit(
        [this] {
          if (set_aside_++ > 0) return;
          row_set_aside_ = row();
          Leave();
        },
        [this] {
          if (--set_aside_ == 0 && row_set_aside_ >= 0) Enter(row_set_aside_);
        });
  }

 private:
  // The hot row where it is now, or -1.
  int row() const;
  void Remember(int row);

  platform::Grid& grid_;
  const platform::Colour& back_;
  const platform::Colour& fore_;
  grid::RowColours own_;
  bool is_hot_ = false;
  int row_ = -1;
  int64_t record_ = -1;     // the record nearest to the row
  int rows_below_ = 0;      // the row's distance from that record's
  int frozen_cols_ = 0;     // when the colours were read
  int set_aside_ = 0;       // by how many
  int row_set_aside_ = -1;  // where it was
};

}  // namespace stockbook::interaction
