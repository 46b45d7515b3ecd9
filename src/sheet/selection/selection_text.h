// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace stockbook::sheet {

class Sheet;
struct Selection;

// The selected range as text that a spreadsheet pastes: a line of the captions of row 0 with their line breaks taken
// out, then a line for each row that is shown, with the cells as they are displayed; hidden columns are left out. Cells
// are parted by tabs: every one but that of the last selected column is followed by one. Lines end in "\r\n", but for
// that of the last selected row. A sheet without a current cell gives the line of all captions. Costs O(cells), some
// tens of nanoseconds each.
std::string SelectionText(const Sheet& sheet, const Selection& selection);

}  // namespace stockbook::sheet
