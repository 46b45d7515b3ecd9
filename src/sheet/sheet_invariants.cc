// SPDX-License-Identifier: MIT
// What must be true of a sheet after every change, and what it takes.
#include "sheet/sheet.h"

namespace stockbook::sheet {

bool Sheet::CheckInvariants() const {
  const bool parts = store_.CheckInvariants() && outline_.CheckInvariants() && selection_.CheckInvariants() &&
                     column_axis().CheckInvariants() && geometry().CheckInvariants();
  const bool pinned = fixed_rows_ >= 0 && fixed_rows_ <= Rows() && fixed_cols_ >= 0 && fixed_cols_ <= Cols() &&
                      frozen_cols_ >= 0 && PinnedCols() >= fixed_cols_;
  const bool scrolled = anchor_.row >= 0 && anchor_.row <= Rows() && anchor_.offset_px >= 0 && scroll_x_ >= 0;
  const bool mouse = MouseRow() < Rows() && MouseCol() < Cols() && drop_column_ <= Cols();
  return parts && pinned && scrolled && mouse && selection_.IsWithin(Rows(), Cols()) && states_.Rows() == Rows() &&
         column_axis().Count() == Cols();
}

size_t Sheet::EngineBytes() const {
  return store_.MemoryBytes() + states_.MemoryBytes() + rows_.MemoryBytes() + column_axis().MemoryBytes() +
         sizeof(Sheet);
}

}  // namespace stockbook::sheet
