// SPDX-License-Identifier: MIT
#include "stockbook/window/total_notes.h"

#include "stockbook/base/column_keys.h"
#include "stockbook/platform/grid_guards.h"

namespace stockbook::app {
namespace {

constexpr const char* kTotalNote = "本期合计\n累计";
constexpr const char* kTotalNoteColumns[] = {base::keys::kExplain, base::keys::kProductName, base::keys::kBillKind};

int TotalNoteColumn(const platform::Grid& grid) {
  for (const char* key : kTotalNoteColumns) {
    const int column = grid.ColIndex(key);
    if (column >= 0 && !grid.ColHidden(column)) return column;
  }
  return -1;
}

}  // namespace

void NoteTotals(platform::Grid& grid) {
  const int column = TotalNoteColumn(grid);
  const int quantity = grid.ColIndex(base::keys::kQuantity);
  if (quantity < 0) return;
  const auto redraw = platform::RedrawOff(grid);
  for (int node = grid.NextSubtotal(grid.FixedRows()); node >= 0; node = grid.NextSubtotal(node + 1)) {
    // The nodes above the lines of a period have no numbers.
    const bool is_total = grid.TextMatrix(node, quantity).find('\n') != std::string::npos;
    for (const char* key : kTotalNoteColumns) {
      const int each = grid.ColIndex(key);
      if (each < 0) continue;
      const std::string text = grid.TextMatrix(node, each);
      if (is_total && each == column && text.empty()) grid.SetTextMatrix(node, each, kTotalNote);
      // Where the columns have changed it stands in another one.
      if ((!is_total || each != column) && text == kTotalNote) grid.SetTextMatrix(node, each, "");
    }
  }
}

}  // namespace stockbook::app
