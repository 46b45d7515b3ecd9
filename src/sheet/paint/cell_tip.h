// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "sheet/geometry/rect.h"
#include "sheet/geometry/text_measure.h"

namespace stockbook::sheet {

class View;

// What is to be told of the cell at a point of the view, while the mouse rests there.
struct CellTip {
  std::string text;  // of the whole cell, as shown; empty where nothing of it is cut off
  Rect cell;         // what is seen of the cell; the tip holds as long as the mouse stays in it

  static CellTip At(const View& view, TextMeasure& measure, Point point);
};

}  // namespace stockbook::sheet
