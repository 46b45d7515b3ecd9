// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "sheet/outline/row_states.h"
#include "sheet/store/store.h"

namespace stockbook::sheet {

// The numbers of the states that a sheet's rows, texts, columns and loaded columns are in.
struct SheetRevisions {
  int64_t rows = 0;
  int64_t texts = 0;
  int64_t columns = 0;
  int64_t loaded = 0;
};

// What a sheet holds, to be put back into it: cells, columns, rows, folds, heights and what is fixed and frozen; not
// its appearance. It shares the loaded columns, so it costs O(runs + columns + cells set). See Sheet::KeepContents.
struct KeptSheet {
  Store store;
  RowStates::Kept states;
  int fixed_rows = 0;
  int fixed_cols = 0;
  int frozen_cols = 0;
  int outline_col = -1;
  SheetRevisions revisions;
};

}  // namespace stockbook::sheet
