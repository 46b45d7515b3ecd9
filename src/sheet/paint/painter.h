// SPDX-License-Identifier: MIT
#pragma once

#include "sheet/paint/canvas.h"
#include "sheet/paint/snapshot.h"
#include "stockbook/base/api.h"

namespace stockbook::sheet {

// Paints the snapshot onto the canvas, pane by pane, in passes of few calls each: backgrounds, pictures, texts, grid
// lines and tree, then the edges and the frame of the current cell. Nothing is drawn outside the snapshot's area.
STOCKBOOK_API void Paint(const Snapshot& snapshot, Canvas& canvas);

}  // namespace stockbook::sheet
