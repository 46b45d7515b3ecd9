// SPDX-License-Identifier: MIT
#include "databases/sqlite/file_state.h"

#include <algorithm>

namespace stockbook::databases {

// The index of the log is in memory that all connections share. It begins with two copies of its head, which a writer
// changes one after the other at each commit: https://www.sqlite.org/walformat.html#the_wal_index_file_format
std::optional<FileState::LogHead> LogHeadOf(sqlite3* connection) {
  constexpr int kRegionBytes = 32768;
  sqlite3_file* file = nullptr;
  if (sqlite3_file_control(connection, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK || file == nullptr ||
      file->pMethods == nullptr || file->pMethods->iVersion < 2 || file->pMethods->xShmMap == nullptr) {
    return std::nullopt;
  }
  volatile void* region = nullptr;
  constexpr int kDoNotExtend = 0;
  if (file->pMethods->xShmMap(file, 0, kRegionBytes, kDoNotExtend, &region) != SQLITE_OK || region == nullptr)
    return std::nullopt;
  const auto* bytes = static_cast<volatile unsigned char*>(region);
  FileState::LogHead first;
  FileState::LogHead second;
  std::copy_n(bytes, first.size(), first.begin());
  file->pMethods->xShmBarrier(file);
  std::copy_n(bytes + first.size(), second.size(), second.begin());
  return first == second ? std::optional(first) : std::nullopt;
}

bool IsInPlace(sqlite3* connection) {
  int moved = 1;
  return sqlite3_file_control(connection, "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK && moved == 0;
}

}  // namespace stockbook::databases
