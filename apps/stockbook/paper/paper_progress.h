// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProgressDialog>
#include <QWidget>

#include "stockbook/qt/grid_printer.h"

namespace stockbook::app {

// Shows how far a long printing is, and a button to cancel it, which also Esc presses. Short ones show nothing. While
// it is shown nothing else of the window can be used, so that the journal does not change under the printer.
class PaperProgress {
  Q_DECLARE_TR_FUNCTIONS(PaperProgress)

 public:
  static constexpr int kPatienceMs = 400;

  // `patience_ms` is how long a printing may take without telling anything.
  explicit PaperProgress(QWidget* parent, int patience_ms = kPatienceMs);
  PaperProgress(const PaperProgress&) = delete;
  PaperProgress& operator=(const PaperProgress&) = delete;

  // Returns whether to go on. Repaints a few times a second only, however short a page takes.
  bool Tell(int done, int all);
  // To be handed to what prints; valid as long as this.
  qt::PageProgress Telling();

 private:
  int patience_ms_;
  QElapsedTimer since_begin_;
  QElapsedTimer since_told_;
  QProgressDialog dialog_;
};

}  // namespace stockbook::app
