// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

#include "platform/grid_types.h"

namespace stockbook::qt {

// 0x00BBGGRR as the control keeps it, and back; colours are opaque.
inline QColor ToQColor(platform::Colour colour) {
  return QColor(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                static_cast<int>(colour >> 16 & 0xFF));
}

inline platform::Colour FromQColor(const QColor& colour) {
  return static_cast<platform::Colour>(colour.red() | colour.green() << 8 | colour.blue() << 16);
}

// Half way to the other colour: what cannot be used just now is shown so.
inline QColor Dimmed(const QColor& colour, const QColor& toward) {
  return QColor((colour.red() + toward.red()) / 2, (colour.green() + toward.green()) / 2,
                (colour.blue() + toward.blue()) / 2);
}

// Whether light text reads on it better than dark text.
inline bool IsDark(const QColor& colour) { return qGray(colour.rgb()) <= 128; }

}  // namespace stockbook::qt
