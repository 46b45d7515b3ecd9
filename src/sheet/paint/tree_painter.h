// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "sheet/paint/batches.h"
#include "sheet/paint/cell_layout.h"
#include "sheet/paint/snapshot.h"
#include "stockbook/sheet/store/appearance.h"

namespace stockbook::sheet {

// Adds the outline tree of the pane's column: the signs of nodes that govern lines, as boxes or as the sheet's node
// pictures, and the lines of the tree in the style of the outline bar.
void AddTree(const Appearance& appearance, const PaintMetrics& metrics, const SnapshotPane& pane, size_t column,
             Batches& batches);

}  // namespace stockbook::sheet
