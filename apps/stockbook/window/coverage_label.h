// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

#include "stockbook/command/journal_options.h"
#include "stockbook/platform/connection.h"

namespace stockbook::app {

// Tells in the line of messages what the journal does not list, and in its tip why. Hidden where it lists everything
// that its heading says. It stays on one line and asks the inventory once a journal.
class CoverageLabel : public QLabel {
  Q_OBJECT

 public:
  explicit CoverageLabel(QWidget* parent = nullptr);

  // What cannot be read is not told.
  void Tell(platform::Connection& connection, const JournalOptions& options);
};

}  // namespace stockbook::app
