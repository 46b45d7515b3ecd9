// SPDX-License-Identifier: MIT
#pragma once

#include <QKeyEvent>
#include <QMouseEvent>

#include "sheet/input/events.h"

namespace stockbook::qt {

// Converts the toolkit's input events into the sheet's. `scale` is device pixels per logical pixel.
sheet::KeyEvent ToSheet(const QKeyEvent& event);
// Presses, double clicks and releases carry their button, moves the button that is held.
sheet::MouseEvent ToSheet(const QMouseEvent& event, double scale);

}  // namespace stockbook::qt
