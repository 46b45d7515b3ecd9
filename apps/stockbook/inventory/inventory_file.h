// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "stockbook/command/output_file.h"

struct sqlite3;

namespace stockbook::app {

// A new inventory file while it is written: under a temporary name, in one transaction, until Close; Commit moves it
// into place, and without it nothing is left. An inventory that it replaces is not read, and not changed before, except
// that the database completes what another program left unfinished in it. Errors are platform::Error.
class InventoryFile {
 public:
  explicit InventoryFile(const std::string& path);
  InventoryFile(const InventoryFile&) = delete;
  InventoryFile& operator=(const InventoryFile&) = delete;

  // nullptr after Close.
  sqlite3* handle() const { return database_.get(); }
  // What messages call the file, and where it is until Commit.
  const std::string& target() const { return file_.target(); }
  std::string path() const { return file_.path(); }

  void Execute(std::string_view sql);
  // Analyzes, commits and closes; the file can be opened by others then.
  void Close();
  void Commit();

 private:
  struct CloseDatabase {
    void operator()(sqlite3* database) const;
  };
  void SettleReplaced() const;

  PendingFile file_;
  std::unique_ptr<sqlite3, CloseDatabase> database_;
};

}  // namespace stockbook::app
