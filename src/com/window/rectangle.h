// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include "stockbook/sheet/geometry/rect.h"

namespace stockbook::com {

// Converts between the system's rectangles and the sheet's, both in the same pixels.
inline RECT ToRECT(const sheet::Rect& rect) { return {rect.x, rect.y, rect.right(), rect.bottom()}; }

inline sheet::Rect FromRECT(const RECT& rect) {
  return {static_cast<int>(rect.left), static_cast<int>(rect.top), static_cast<int>(rect.right - rect.left),
          static_cast<int>(rect.bottom - rect.top)};
}

}  // namespace stockbook::com
