// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "stockbook/base/api.h"
#include "stockbook/sheet/geometry/rect.h"
#include "stockbook/sheet/geometry/text_measure.h"

namespace stockbook::sheet {

class View;

// The tooltip for the cell at a point of the view.
struct STOCKBOOK_API CellTip {
  std::string text;  // the whole displayed text; empty if none of it is cut off
  Rect cell;         // the visible part of the cell; the tooltip is valid while the mouse is in it

  static CellTip At(const View& view, TextMeasure& measure, Point point);
};

}  // namespace stockbook::sheet
