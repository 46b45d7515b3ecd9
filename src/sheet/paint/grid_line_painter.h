// SPDX-License-Identifier: MIT
#pragma once

#include "sheet/paint/batches.h"
#include "sheet/paint/cell_layout.h"
#include "sheet/paint/snapshot.h"
#include "sheet/store/appearance.h"

namespace stockbook::sheet {

// Adds the grid lines of the pane: one rectangle a row and one a column. Inset and raised lines have a light line
// beside the dark one.
void AddGridLines(const Appearance& appearance, const PaintMetrics& metrics, const SnapshotPane& pane,
                  Batches& batches);

}  // namespace stockbook::sheet
