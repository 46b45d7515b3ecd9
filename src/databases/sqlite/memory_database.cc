// SPDX-License-Identifier: MIT
#include "databases/sqlite/memory_database.h"

#include <atomic>

#include "databases/sqlite/error_codes.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

// Names that no file has: SQLite keeps this one for itself. The rest begins with a slash, which makes the database one
// for all connections of the process that know it.
constexpr std::string_view kMemory = ":memory:";

std::string NewName() {
  static std::atomic<uint64_t> number = 0;
  return std::string(kMemory) + "/stockbook-" + std::to_string(++number);
}

}  // namespace

MemoryDatabase::MemoryDatabase() : name_(NewName()) {
  sqlite3* opened = nullptr;
  constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
  const int code = sqlite3_open_v2(NameInMemory(name_), &opened, kFlags, kFileSystem);
  handle_.reset(opened);
  Check(code);
  // SQLite's own limit, a gigabyte, is less than a large inventory may need.
  sqlite3_int64 most_bytes = sqlite3_int64{1} << 40;
  Check(sqlite3_file_control(handle(), "main", SQLITE_FCNTL_SIZE_LIMIT, &most_bytes));
  Run("PRAGMA journal_mode=OFF");
}

const char* MemoryDatabase::NameInMemory(std::string_view data_source) {
  return data_source.starts_with(kMemory) && data_source.substr(kMemory.size()).starts_with('/')
             ? data_source.data() + kMemory.size()
             : nullptr;
}

void MemoryDatabase::Run(const std::string& sql) const {
  Check(sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr));
}

void MemoryDatabase::Check(int code) const {
  if (code == SQLITE_OK || code == SQLITE_ROW || code == SQLITE_DONE) return;
  const char* detail = handle() != nullptr ? sqlite3_errmsg(handle()) : sqlite3_errstr(code);
  throw platform::Error("Execute", std::string("无法在内存中放下要读的表，请缩小查询的范围：") + detail, code,
                        KindOfCode(code));
}

}  // namespace stockbook::databases
