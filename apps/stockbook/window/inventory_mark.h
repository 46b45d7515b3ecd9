// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "stockbook/platform/connection.h"

namespace stockbook::app {

// What changes whenever somebody posts to an inventory, as a text to compare. Of a file that is its size and time, with
// those of the log beside it; of a server the newest lines and bills, so that there a correction of an old line alone
// is not noticed. A file is not opened: closing it would take away the locks that the database has on it in this
// process.
class InventoryMark {
 public:
  // `file` is "" for a server.
  explicit InventoryMark(std::string file = {}) : file_(std::move(file)) {}

  bool IsOfFile() const { return !file_.empty(); }
  // "" if it cannot be told. `connection` is asked for a server's alone; for a file it costs two calls of the system.
  std::string Read(platform::Connection* connection) const;

 private:
  std::string file_;
};

// Tells the file that has the name now from another one that takes its place; "" where there is none.
std::string IdentityOfFile(const std::string& path);

}  // namespace stockbook::app
