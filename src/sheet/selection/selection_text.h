// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace stockbook::sheet {

class Sheet;
struct Selection;

// The selected range as text for a spreadsheet: a line with the captions of row 0, their line breaks removed, then one
// line for each shown row, with the cells as displayed. Hidden columns are left out. Every cell is followed by a tab
// unless it is in the last selected column, every line by "\r\n" unless it is the last selected row. Without a current
// cell the result is the line of all captions. O(cells), some tens of nanoseconds each.
std::string SelectionText(const Sheet& sheet, const Selection& selection);

}  // namespace stockbook::sheet
