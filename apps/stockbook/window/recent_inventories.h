// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QObject>
#include <QString>

#include "stockbook/window/window_memory.h"

namespace stockbook::app {

// The files that were opened last, newest first, as a menu. Servers are not in it: their strings may hold a password.
class RecentInventories : public QObject {
  Q_OBJECT

 public:
  RecentInventories(WindowMemory& memory, QMenu& menu);

  // A file was opened.
  void Add(const QString& file);
  // The one that was opened last, whether it still exists or not; "" if there is none.
  QString Last() const;
  // After the memory was cleared.
  void Refill();

 signals:
  void Chosen(const QString& file);

 private:
  WindowMemory& memory_;
  QMenu& menu_;
};

}  // namespace stockbook::app
