// SPDX-License-Identifier: MIT
#include "stockbook/inventory/inventory_file.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "stockbook/inventory/database_companions.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

constexpr int kPatienceMs = 2000;
// "StkB", by which desktops tell an inventory from other databases: packaging/stockbook.xml looks for it.
constexpr std::string_view kApplication = "PRAGMA application_id=0x53746B42";

}  // namespace

void InventoryFile::CloseDatabase::operator()(sqlite3* database) const { sqlite3_close_v2(database); }

InventoryFile::InventoryFile(const std::string& path) : file_(path) {
  sqlite3* database = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
  const int code = sqlite3_open_v2(file_.path().c_str(), &database, flags, nullptr);
  database_.reset(database);
  if (code != SQLITE_OK) {
    throw platform::Error("write an inventory", "Cannot write '" + path + "': " + sqlite3_errstr(code) + ".", code);
  }
  // Nobody else uses the file, and an interrupted one is discarded, so it needs no journal and no waiting for the disk.
  Execute(
      "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; PRAGMA locking_mode=EXCLUSIVE; PRAGMA cache_size=-65536; "
      "BEGIN");
  Execute(kApplication);
}

void InventoryFile::Execute(std::string_view sql) {
  const int code = sqlite3_exec(database_.get(), std::string(sql).c_str(), nullptr, nullptr, nullptr);
  if (code == SQLITE_OK) return;
  throw platform::Error("write an inventory",
                        "Cannot write '" + file_.target() + "': " + sqlite3_errmsg(database_.get()) + ".", code);
}

void InventoryFile::Close() {
  // Tells the planner about indexes that select everything, such as a product that has all the lines.
  Execute("PRAGMA analysis_limit=2000; ANALYZE; COMMIT");
  const int code = sqlite3_close(database_.release());
  if (code != SQLITE_OK) {
    throw platform::Error("write an inventory", "Cannot write '" + file_.target() + "': " + sqlite3_errstr(code) + ".",
                          code);
  }
}

void InventoryFile::Commit() {
  SettleReplaced();
  file_.Commit();
  // Leftover files of a replaced inventory must not be taken for parts of the new one.
  for (const std::string_view ending : kDatabaseCompanions) {
    std::error_code ignored;
    std::filesystem::remove(file_.place() + std::string(ending), ignored);
  }
}

// A journal beside the replaced inventory would be played back into the new one by whoever opens it, if the program
// were killed between the move and the removal of the journal. The database plays it back into the old one first.
void InventoryFile::SettleReplaced() const {
  std::error_code ignored;
  const auto is_left = [&](std::string_view ending) {
    const auto size = std::filesystem::file_size(file_.place() + std::string(ending), ignored);
    return !ignored && size > 0;
  };
  if (std::none_of(kDatabaseCompanions.begin(), kDatabaseCompanions.end(), is_left)) return;
  sqlite3* opened = nullptr;
  int code = sqlite3_open_v2(file_.place().c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  const std::unique_ptr<sqlite3, CloseDatabase> replaced(opened);
  if (code == SQLITE_OK) {
    sqlite3_busy_timeout(opened, kPatienceMs);
    code = sqlite3_exec(opened, "SELECT count(*) FROM sqlite_master; PRAGMA journal_mode=DELETE", nullptr, nullptr,
                        nullptr);
  }
  // What is no database, or cannot be repaired, has nothing to lose.
  if (code != SQLITE_BUSY && code != SQLITE_LOCKED) return;
  throw platform::Error(
      "write an inventory",
      "Cannot replace '" + file_.target() + "': another program is using it; close that first, or write another file.",
      code);
}

}  // namespace stockbook::app
