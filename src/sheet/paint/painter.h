// SPDX-License-Identifier: MIT
#pragma once

#include "sheet/paint/canvas.h"
#include "sheet/paint/snapshot.h"

namespace stockbook::sheet {

// Paints the snapshot's area onto the canvas, pane by pane, in passes of few calls each: backgrounds, pictures, texts,
// grid lines and tree, then the frame of the current cell and the edges. Nothing is drawn outside of the snapshot's
// area.
void Paint(const Snapshot& snapshot, Canvas& canvas);

}  // namespace stockbook::sheet
