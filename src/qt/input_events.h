// SPDX-License-Identifier: MIT
#pragma once

#include <QKeyEvent>
#include <QMouseEvent>

#include "sheet/input/events.h"

namespace stockbook::qt {

// The toolkit's input in the sheet's words. `scale` is device pixels per logical pixel.
sheet::KeyEvent ToSheet(const QKeyEvent& event);
// Presses, double clicks and releases name their button; moves the one that is held.
sheet::MouseEvent ToSheet(const QMouseEvent& event, double scale);

}  // namespace stockbook::qt
