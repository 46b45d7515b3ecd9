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

}  // namespace stockbook::qt
