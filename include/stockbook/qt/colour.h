// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

#include "stockbook/platform/grid_types.h"

namespace stockbook::qt {

// Converts between the toolkit's colours and 0x00BBGGRR, which the control uses. Colours are opaque.
inline QColor ToQColor(platform::Colour colour) {
  return QColor(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                static_cast<int>(colour >> 16 & 0xFF));
}

inline platform::Colour FromQColor(const QColor& colour) {
  return static_cast<platform::Colour>(colour.red() | colour.green() << 8 | colour.blue() << 16);
}

// Halfway to the other colour, which shows that something is disabled.
inline QColor Dimmed(const QColor& colour, const QColor& toward) {
  return QColor((colour.red() + toward.red()) / 2, (colour.green() + toward.green()) / 2,
                (colour.blue() + toward.blue()) / 2);
}

// Whether light text is easier to read on it than dark text.
inline bool IsDark(const QColor& colour) { return qGray(colour.rgb()) <= 128; }

}  // namespace stockbook::qt
