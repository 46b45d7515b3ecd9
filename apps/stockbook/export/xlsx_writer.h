// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <iosfwd>
#include <string>

#include "stockbook/export/shown_table.h"

namespace stockbook::app {

struct XlsxOptions {
  std::string title;          // of the journal: in the properties of the file and above each printed page
  int most_rows = 1'048'576;  // of one sheet, the captions included; what is more goes to further sheets
  ShownColumns columns = ShownColumns::kVisible;
  // Is told the row of the grid now and then; false ends the writing.
  std::function<bool(int row)> goes_on;
};

// Whether this build has the library that writes workbooks.
bool CanWriteXlsx();

// Writes what the grid shows as an .xlsx workbook: its visible columns and the rows that nobody has hidden, with real
// numbers and dates in the formats of the grid, its outline with closed periods closed, and the captions and frozen
// columns in view. The bill is taken apart into period or caption, day, kind and number. A total row becomes two, as
// each cell of a workbook has one number: 本期 (this period) and 累计 (all so far). Texts are texts, whatever they
// begin with. Memory: that of a row; the library uses temporary files. False, with nothing written, if it was ended.
// Throws platform::Error.
bool WriteXlsx(const sheet::GridSheet& grid, const XlsxOptions& options, std::ostream& out);

}  // namespace stockbook::app
