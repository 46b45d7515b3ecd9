// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <exception>
#include <string>

#include "stockbook/import/import_sentence.h"
#include "stockbook/import/open_table.h"
#include "stockbook/import/table_import.h"

class QWidget;

namespace stockbook::app {

// How an import in the window ended.
struct ImportEnd {
  ImportResult result;
  QString message;  // what was imported, or why nothing was
};

// Imports a table on a thread of its own, while the window is painted and a dialog with the number of lines lets the
// user cancel, which leaves no inventory behind. Never throws for what is wrong with the table or the disk.
ImportEnd ImportBesideWindow(QWidget* parent, const std::string& path, const TableOptions& options, ImportPlan plan);

// The sentence in the language of the window.
QString SentenceText(const ImportSentence& sentence);

// What an error that reading a table ends with says to the user.
QString ImportErrorText(const std::exception& error);

// 日期有误 3 行、没有商品 1 行; "" if no line is skipped.
QString SkippedText(const ImportTally& tally);

}  // namespace stockbook::app
