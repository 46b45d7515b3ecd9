// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <memory>
#include <string>

#include "stockbook/platform/connection.h"
#include "stockbook/window/inventory_mark.h"

namespace stockbook::app {

// Notices that other programs changed the inventory since the journal was read. A file is looked at every few seconds,
// a server only when the user comes back to the window and rarely meanwhile. Tells every change once.
class ChangeWatch : public QObject {
  Q_OBJECT

 public:
  explicit ChangeWatch(QObject* parent = nullptr);

  // `file` is "" for a server.
  void Follow(std::shared_ptr<platform::Connection> connection, const std::string& file);
  // Before a load, so that a change during it is noticed: what is there now is what will be shown.
  void LoadBegins();
  // The load read the inventory; if it failed the journal is still that of before.
  void LoadSucceeded();
  // The user looks at the window again.
  void LookNow() { Look(); }
  void SetPause(int file_ms, int server_ms);

 signals:
  void Changed();

 private:
  void Look();

  std::shared_ptr<platform::Connection> connection_;
  InventoryMark mark_;
  std::string shown_;  // the mark of what the window shows; "" before the first load
  std::string loading_;
  std::string told_;
  int file_ms_;
  int server_ms_;
  QTimer timer_;
};

}  // namespace stockbook::app
