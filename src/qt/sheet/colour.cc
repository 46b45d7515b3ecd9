// SPDX-License-Identifier: MIT
#include "stockbook/qt/colour.h"

namespace stockbook::qt {

QColor ToQColor(platform::Colour colour) {
  return QColor(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                static_cast<int>(colour >> 16 & 0xFF));
}

platform::Colour FromQColor(const QColor& colour) {
  return static_cast<platform::Colour>(colour.red() | colour.green() << 8 | colour.blue() << 16);
}

QColor Dimmed(const QColor& colour, const QColor& toward) {
  return QColor((colour.red() + toward.red()) / 2, (colour.green() + toward.green()) / 2,
                (colour.blue() + toward.blue()) / 2);
}

bool IsDark(const QColor& colour) { return qGray(colour.rgb()) <= 128; }

}  // namespace stockbook::qt
