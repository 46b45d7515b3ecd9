// SPDX-License-Identifier: MIT
#include "interaction/hot_row.h"

namespace stockbook::interaction {

int HotRow::row() const {
  if (!is_hot_) return -1;
  int row = row_;
  if (record_ >= 0) {
    const int anchor = grid_.RowOfRecord(static_cast<size_t>(record_));
    if (anchor < 0) return -1;
    row = anchor + rows_below_;
  }
  return row >= grid_.FixedRows() && row < grid_.Rows() ? row : -1;
}

// A total follows its last line, a node precedes its first one, and the opening row precedes that node.
void HotRow::Remember(int row) {
  row_ = row;
  record_ = -1;
  for (const int below : {0, 1, -1, -2}) {
    const int anchor = row - below;
    if (anchor < grid_.FixedRows() || anchor >= grid_.Rows()) continue;
    record_ = grid_.RecordOfRow(anchor);
    rows_below_ = below;
    if (record_ >= 0) return;
  }
}

void HotRow::Enter(int row) {
  if (set_aside_ > 0) {
    row_set_aside_ = row;
    return;
  }
  Leave();
  if (row < grid_.FixedRows() || row >= grid_.Rows()) return;
  frozen_cols_ = grid_.FrozenCols();
  // If all columns are frozen, there is no scrolling cell to read, and nothing is captured.
  own_ = {appearance_.ColourOf(platform::GridColour::kBackColor),
          appearance_.ColourOf(platform::GridColour::kForeColor), grid_.CellBackColor(row, frozen_cols_),
          grid_.CellForeColor(row, frozen_cols_)};
  grid::CaptureRowColours(grid_, view_, row, own_);
  Remember(row);
  is_hot_ = true;
  grid_.SetCellColors({row, grid_.FixedCols(), row + 1, grid_.Cols()}, back_, fore_);
}

void HotRow::Leave() {
  const int left = row();
  is_hot_ = false;
  if (left < 0) return;
  const int fixed = grid_.FixedCols();
  const int frozen = grid_.FrozenCols();
  grid_.SetCellColors({left, fixed, left + 1, grid_.Cols()}, own_.normal_back, own_.normal_fore);
  if (frozen < fixed || frozen >= grid_.Cols()) return;
  // No colours could be read for columns frozen since.
  const bool known = frozen == frozen_cols_;
  grid_.SetCellColors({left, fixed, left + 1, frozen + 1},
                      known ? own_.frozen_back : appearance_.ColourOf(platform::GridColour::kBackColorFrozen),
                      known ? own_.frozen_fore : appearance_.ColourOf(platform::GridColour::kForeColorFrozen));
}

}  // namespace stockbook::interaction
