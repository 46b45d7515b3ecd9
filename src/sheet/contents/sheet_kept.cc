// SPDX-License-Identifier: MIT
// What a sheet holds, kept and put back.
#include <utility>

#include "sheet/contents/kept_sheet.h"
#include "sheet/outline/row_states.h"
#include "stockbook/sheet/contents/sheet.h"

namespace stockbook::sheet {

KeptSheet Sheet::KeepContents() const {
  return {store_, states_.Keep(), fixed_rows_, fixed_cols_, frozen_cols_, outline_col_, revisions_};
}

void Sheet::PutBackContents(KeptSheet kept) {
  store_ = std::move(kept.store);
  fixed_rows_ = kept.fixed_rows;
  fixed_cols_ = kept.fixed_cols;
  frozen_cols_ = kept.frozen_cols;
  outline_col_ = kept.outline_col;
  revisions_ = kept.revisions;
  states_.PutBack(std::move(kept.states));
  Tell([](SheetWatcher& watcher) { watcher.RowsReplaced(); });
  ColumnsChanged();
  LooksChanged();
}

}  // namespace stockbook::sheet
