// SPDX-License-Identifier: MIT
#include "journal/restricted_amounts.h"

#include "stockbook/base/column_keys.h"

namespace stockbook::journal {

void MaskAmounts(platform::GridTable& grid) {
  for (const char* key : base::keys::kRestricted) {
    const base::Value mask{std::string(kAmountMask)};
    grid.ReplaceLoadedText(grid.ColIndex(key), columns::Column::Constant(mask, grid.RecordCount()));
  }
}

}  // namespace stockbook::journal
