// SPDX-License-Identifier: MIT
#pragma once

namespace stockbook::sheet {

class Sheet;

// Gives a column the width, or a row the height, that everything in it which is in view needs, captions included; at
// most what is in view of the sheet. It costs what is seen, whatever the number of rows. Nothing happens where the
// column or row is out of view or the sheet's viewer cannot measure texts.
void FitColumn(Sheet& sheet, int column);
void FitRow(Sheet& sheet, int row);

}  // namespace stockbook::sheet
