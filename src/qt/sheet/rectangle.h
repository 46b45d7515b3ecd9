// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

#include "stockbook/sheet/geometry/rect.h"

namespace stockbook::qt {

// Converts between the toolkit's rectangles and the sheet's, both in the same pixels.
inline QRect ToQRect(const sheet::Rect& rect) { return {rect.x, rect.y, rect.width, rect.height}; }

inline sheet::Rect FromQRect(const QRect& rect) { return {rect.x(), rect.y(), rect.width(), rect.height()}; }

}  // namespace stockbook::qt
