// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "grid/row_colours.h"
#include "stockbook/base/api.h"
#include "stockbook/base/scope_exit.h"
#include "stockbook/platform/grid_appearance.h"
#include "stockbook/platform/grid_table.h"
#include "stockbook/platform/grid_view.h"

namespace stockbook::interaction {

// The current row in colours of its own. Before a row becomes hot its colours are read, and these are what it gets
// back: the colours of its scrolling cells for all of it, those of its frozen cells for the frozen columns. Rows that
// were never hot are never touched. If rows are inserted or removed, the hot row is found again by the record nearest
// to it.
class STOCKBOOK_API HotRow {
 public:
  // Borrows its arguments; the hot colours are read when needed.
  HotRow(platform::GridTable& grid, const platform::GridView& view, const platform::GridAppearance& appearance,
         const platform::Colour& back, const platform::Colour& fore)
      : grid_(grid), view_(view), appearance_(appearance), back_(back), fore_(fore) {}

  // Makes a data row the hot one, in place of another; ignores other rows.
  void Enter(int row);
  // The hot row, if there is one, gets its colours back.
  void Leave();
  // The rows have been replaced.
  void Forget() { hot_.is_hot = false; }

  // Which row is hot, and that again, for rows that are put back with the colours they had then.
  struct Kept {
    grid::RowColours own;
    bool is_hot = false;
    int row = -1;
    int64_t record = -1;  // the record nearest to the row
    int rows_below = 0;   // the row's distance from that record's
    int frozen_cols = 0;  // when the colours were read
  };
  const Kept& Keep() const { return hot_; }
  void PutBack(const Kept& kept) { hot_ = kept; }

  // While the returned guard lives, the row has its own colours; afterwards, if it still exists, the current hot ones.
  // For whatever must not show the hot row or changes its look (printing, other colours).
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

  platform::GridTable& grid_;
  const platform::GridView& view_;
  const platform::GridAppearance& appearance_;
  const platform::Colour& back_;
  const platform::Colour& fore_;
  Kept hot_;
  int set_aside_ = 0;       // number of guards
  int row_set_aside_ = -1;  // the hot row at that time
};

}  // namespace stockbook::interaction
