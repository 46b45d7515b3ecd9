// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <cstdint>

#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::app {

// Adds forms for spreadsheets to what the control copies, whose plain text stays as it is, and copies one cell alone.
class SelectionClipboard : public QObject {
  Q_OBJECT

 public:
  // Larger selections stay plain text: the other forms take many times its room.
  static constexpr int64_t kMostCells = 200'000;

  explicit SelectionClipboard(qt::StockbookWidget& stockbook);

  // Puts what the current cell shows on the clipboard, without its caption.
  void CopyCell();

 signals:
  // A message for the user.
  void Said(const QString& message);

 private:
  void ClipboardChanged();
  void AddForms();

  qt::StockbookWidget& stockbook_;
  bool adds_forms_ = false;  // soon
};

}  // namespace stockbook::app
