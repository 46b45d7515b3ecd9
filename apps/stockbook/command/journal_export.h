// SPDX-License-Identifier: MIT
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "stockbook/platform/grid.h"
#include "stockbook/sheet/grid_sheet.h"
#include "stockbook/window/journal_desk.h"

namespace stockbook::app {

enum class ExportColumns { kVisible, kAll };
// At the start of a text, it tells spreadsheet programs that it is UTF-8.
enum class ByteOrderMark { kNone, kWritten };
// The bill as it is shown, or in four columns: period or caption, day, kind and number.
enum class BillColumns { kTogether, kApart };

struct SeparatedOptions {
  ExportColumns columns = ExportColumns::kVisible;
  char separator = ',';
  ByteOrderMark mark = ByteOrderMark::kNone;
  BillColumns bill = BillColumns::kTogether;
};

// Captions and then the shown texts of all data rows that are not hidden, those of closed periods included, separated
// by `separator`; a field that contains the separator, a quote or a line break is quoted, with quotes doubled. What a
// spreadsheet would take for a formula is written as SpreadsheetText does. Lines end in "\n". The column of numbers,
// which shows no caption, gets one.
void WriteSeparated(const sheet::GridSheet& grid, const SeparatedOptions& options, std::ostream& out);
inline void WriteSeparated(const sheet::GridSheet& grid, ExportColumns columns, char separator, std::ostream& out) {
  WriteSeparated(grid, SeparatedOptions{columns, separator}, out);
}

// One JSON object per line: first the caption, the columns and the messages of the load, then the same rows, each with
// its outline state, height in twips, and stored and shown texts by column key. Empty cells are omitted.
void WriteNdjson(const sheet::GridSheet& grid, ExportColumns columns, const std::string& caption,
                 const LoadReport& report, std::ostream& out);

// Appends a JSON string with its quotes.
void AppendJson(std::string_view text, std::string& out);

}  // namespace stockbook::app
