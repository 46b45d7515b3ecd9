// SPDX-License-Identifier: MIT
#include "stockbook/window/host_layout.h"

#include "base/column_keys.h"

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

void RefineLayout(platform::Grid& grid) {
  for (const HostWidth& width : kHostWidths) {
    if (const int column = grid.ColIndex(width.key); column >= 0) grid.SetColWidth(column, width.twips);
  }
}

}  // namespace stockbook::app
