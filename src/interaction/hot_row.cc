// SPDX-License-Identifier: MIT
#include "interaction/hot_row.h"

namespace stockbook::interaction {

int HotRow::row() const {
  if (!hot_.is_hot) return -1;
  int row = hot_.row;
  if (hot_.record >= 0) {
    const int anchor = grid_.RowOfRecord(static_cast<size_t>(hot_.record));
    if (anchor < 0) return -1;
    row = anchor + hot_.rows_below;
  }
  return row >= grid_.FixedRows() && row < grid_.Rows() ? row : -1;
}

// A total follows its last line, a node precedes its first one, and the opening row precedes that node.
void HotRow::Remember(int row) {
  hot_.row = row;
  hot_.record = -1;
  for (const int below : {0, 1, -1, -2}) {
    const int anchor = row - below;
    if (anchor < grid_.FixedRows() || anchor >= grid_.Rows()) continue;
    hot_.record = grid_.RecordOfRow(anchor);
    hot_.rows_below = below;
    if (hot_.record >= 0) return;
  }
}

void HotRow::Enter(int row) {
  if (set_aside_ > 0) {
    row_set_aside_ = row;
    return;
  }
  Leave();
  if (row < grid_.FixedRows() || row >= grid_.Rows()) return;
  hot_.frozen_cols = grid_.FrozenCols();
  // If all columns are frozen, there is no scrolling cell to read, and nothing is captured.
  hot_.own = {appearance_.ColourOf(platform::GridColour::kBackColor),
              appearance_.ColourOf(platform::GridColour::kForeColor), grid_.CellBackColor(row, hot_.frozen_cols),
              grid_.CellForeColor(row, hot_.frozen_cols)};
  grid::CaptureRowColours(grid_, view_, row, hot_.own);
  Remember(row);
  hot_.is_hot = true;
  grid_.SetCellColors({row, grid_.FixedCols(), row + 1, grid_.Cols()}, back_, fore_);
}

void HotRow::Leave() {
  const int left = row();
  hot_.is_hot = false;
  if (left < 0) return;
  const int fixed = grid_.FixedCols();
  const int frozen = grid_.FrozenCols();
  grid_.SetCellColors({left, fixed, left + 1, grid_.Cols()}, hot_.own.normal_back, hot_.own.normal_fore);
  if (frozen < fixed || frozen >= grid_.Cols()) return;
  // No colours could be read for columns frozen since.
  const bool known = frozen == hot_.frozen_cols;
  grid_.SetCellColors({left, fixed, left + 1, frozen + 1},
                      known ? hot_.own.frozen_back : appearance_.ColourOf(platform::GridColour::kBackColorFrozen),
                      known ? hot_.own.frozen_fore : appearance_.ColourOf(platform::GridColour::kForeColorFrozen));
}

}  // namespace stockbook::interaction
