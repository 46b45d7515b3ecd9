// SPDX-License-Identifier: MIT
#pragma once

namespace stockbook::sheet {

class View;

// Gives a column the width, or a row the height, that everything in it which is in view needs, captions included; at
// most what is in view. It costs what is seen, whatever the number of rows. Nothing happens where the
// column or row is out of view or the viewer cannot measure texts.
void FitColumn(View& view, int column);
void FitRow(View& view, int row);

}  // namespace stockbook::sheet
