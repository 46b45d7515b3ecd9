// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "stockbook/heading/journal_heading.h"
#include "stockbook/paper/journal_paper.h"
#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::app {

// What is written, and how.
struct JournalFileRequest {
  qt::StockbookWidget& journal;
  JournalHeading heading;
  PaperChoice paper;
  qt::PageProgress progress;  // may be empty
};

// A kind of file that a journal can be written to. `write` returns false if it was cancelled or the stream takes no
// more.
struct JournalFileFormat {
  QString suffix;  // "pdf"
  QString name;    // as the dialog offers it, without the pattern
  std::function<bool(const JournalFileRequest& request, std::ostream& out)> write;

  // "PDF 文件 (*.pdf)"
  QString Filter() const { return name + QStringLiteral(" (*.") + suffix + QLatin1Char(')'); }
};

// The kinds of files in the order in which they are offered: a table for spreadsheets, pages, a picture of the view.
std::vector<JournalFileFormat> JournalFileFormats();

enum class FileOutcome { kWritten, kCancelled };

// Writes a file as a whole or not at all: what was there before stays until everything is written. Throws
// platform::Error with a sentence for the user if it cannot be written, or if the file is the inventory `input` or
// another database.
FileOutcome WriteWholeFile(const std::string& path, const std::string& input,
                           const std::function<bool(std::ostream& out)>& write);

}  // namespace stockbook::app
