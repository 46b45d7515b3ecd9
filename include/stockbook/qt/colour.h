// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

#include "stockbook/platform/grid_types.h"

namespace stockbook::qt {

// Converts between the toolkit's colours and 0x00BBGGRR, which the control uses. Colours are opaque.
QColor ToQColor(platform::Colour colour);
platform::Colour FromQColor(const QColor& colour);

// Halfway to the other colour, which shows that something is disabled.
QColor Dimmed(const QColor& colour, const QColor& toward);

// Whether light text is easier to read on it than dark text.
bool IsDark(const QColor& colour);

}  // namespace stockbook::qt
