// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/base/api.h"

namespace stockbook::sheet {

class View;

// Gives a column the width, or a row the height, that its visible contents need, captions included, but at most the
// size of the view. Costs O(visible cells), whatever the number of rows. Does nothing if the column or row is out of
// view or the viewer cannot measure texts.
void FitColumn(View& view, int column);
void FitRow(View& view, int row);
// Gives every shown column after the fixed ones the width that its contents need, in view or not, but at most the width
// of the view. Of a long sheet it asks rows spread over the whole of it, some ten thousand, whatever their number.
STOCKBOOK_API void FitColumns(View& view);

}  // namespace stockbook::sheet
