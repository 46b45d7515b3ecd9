// SPDX-License-Identifier: MIT
#include "stockbook/window/host_layout.h"

#include "stockbook/base/column_keys.h"
#include "stockbook/platform/grid.h"
#include "stockbook/platform/grid_guards.h"

namespace stockbook::app {
namespace {

// This host has room to show bill numbers, remarks and product names in full, while the control's own layout has to be
// narrow.
struct HostWidth {
  const char* key;
  int twips;
};
constexpr HostWidth kHostWidths[] = {{base::keys::kBillNo, 3900},
                                     {base::keys::kBillKind, 1050},
                                     {base::keys::kExplain, 1800},
                                     {base::keys::kProductName, 3900}};

}  // namespace

void RefineLayout(control::Stockbook& control) {
  platform::Grid& grid = control.Grid();
  for (const HostWidth& width : kHostWidths) {
    if (const int column = grid.ColIndex(width.key); column >= 0) grid.SetColWidth(column, width.twips);
  }
  for (const char* key : base::keys::kSecondUnit) {
    const int column = grid.ColIndex(key);
    if (column >= 0 && grid.ColFormat(column).empty()) grid.SetColFormat(column, control.QuantityFormat());
  }
}

void LowerCaptions(control::Stockbook& control) {
  platform::Grid& grid = control.Grid();
  const auto redraw = platform::RedrawOff(grid);
  const int height = static_cast<int>(control.RowHeight());
  for (int node = grid.NextSubtotal(grid.FixedRows()); node >= 0; node = grid.NextSubtotal(node + 1)) {
    const bool governs = node + 1 < grid.Rows() && grid.RowOutlineLevel(node + 1) > grid.RowOutlineLevel(node);
    if (governs && grid.RowHeight(node) > height) grid.SetRowHeight(node, height);
  }
}

}  // namespace stockbook::app
