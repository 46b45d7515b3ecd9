// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

#include <array>
#include <optional>

namespace stockbook::databases {

// Tells which state of its file the read transaction of one connection sees, so that another connection of the process
// can find out whether it sees the same. While a file has a rollback journal, whoever reads it keeps others from
// changing it, so that two who read at the same time see the same; a file with a log has many states side by side,
// which differ in the head of the log's index.
class FileState {
 public:
  using LogHead = std::array<unsigned char, 48>;

  // Nothing is known, and it is the same as no other.
  FileState() = default;
  static FileState OfRollbackJournal() { return FileState(Kind::kRollback, {}); }
  static FileState OfLog(const LogHead& head) { return FileState(Kind::kLog, head); }

  bool SameAs(const FileState& other) const {
    return kind_ != Kind::kUnknown && kind_ == other.kind_ && head_ == other.head_;
  }

 private:
  enum class Kind { kUnknown, kRollback, kLog };
  FileState(Kind kind, const LogHead& head) : kind_(kind), head_(head) {}

  Kind kind_ = Kind::kUnknown;
  LogHead head_{};
};

// The head of the log's index as it is now, where what was read last had a log, and nobody is writing it. Of a
// connection that has no log, nothing may be asked: it would get one.
std::optional<FileState::LogHead> LogHeadOf(sqlite3* connection);

// Whether the file under the name that the connection was opened with is still the one that it reads.
bool IsInPlace(sqlite3* connection);

}  // namespace stockbook::databases
