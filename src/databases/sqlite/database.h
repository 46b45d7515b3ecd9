// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>

#include "databases/execution/interruption.h"
#include "databases/execution/readable_tables.h"
#include "databases/sqlite/file_state.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {

// An open SQLite file, read only: statements that do anything but read what they may are denied. One thread at a time.
class Database {
 public:
  // Throws platform::Error when the file is missing, is no database, or cannot be read.
  explicit Database(const std::string& file, ReadableTables tables = ReadableTables::All(),
                    std::optional<Interruption::Clock::duration> time_limit = std::nullopt);

  // Another connection to the same file, for another thread: what ends the leader's statements ends its own, too.
  struct Leader {
    const Database& database;
  };
  explicit Database(Leader leader);

  sqlite3* handle() const { return handle_.get(); }
  const ReadableTables& tables() const { return access_->tables; }
  Interruption& interruption() const { return *interruption_; }
  platform::Error ErrorOf(const char* operation) const;
  // What the read transaction that is open sees.
  const FileState& state() const { return state_; }

  // While one lives, statements are the connection's own: they may read the catalogue and begin and end transactions.
  class OwnWork {
   public:
    explicit OwnWork(const Database& database);
    ~OwnWork();
    OwnWork(const OwnWork&) = delete;
    OwnWork& operator=(const OwnWork&) = delete;

   private:
    const Database& database_;
  };

 private:
  struct Access {
    ReadableTables tables;
    const Interruption& interruption;
    int own_work = 0;
  };
  static int Authorize(void* access, int action, const char* table, const char* column, const char* base,
                       const char* view);
  friend class ReadTransaction;
  Database(const std::string& file, ReadableTables tables, std::unique_ptr<Interruption> interruption);
  void OpenFile();
  void LimitWhatStatementsMayDo();
  void ForgetWhatIsDoubted() const;

  struct Closer {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
  };
  std::string file_;
  std::unique_ptr<Interruption> interruption_;
  std::unique_ptr<Access> access_;
  std::unique_ptr<sqlite3, Closer> handle_;  // after what it calls back
  mutable FileState state_;
  mutable bool had_log_ = false;        // when it was read last
  mutable bool doubts_memory_ = false;  // after an error that may have left wrong pages there
};

// A prepared statement. Step gives true while there are rows.
class Statement {
 public:
  Statement(const Database& database, std::string_view sql);
  bool Step();
  void Reset() { sqlite3_reset(handle_.get()); }
  // Tells whoever asks how far the database's statement is that so many rows more have been read.
  void CountRows(size_t rows) const { database_.interruption().CountRows(rows); }
  void Bind(int index, int64_t number) { sqlite3_bind_int64(handle_.get(), index, number); }

  sqlite3_stmt* handle() const { return handle_.get(); }
  int64_t Integer(int column) const { return sqlite3_column_int64(handle_.get(), column); }
  // Bytes as stored; valid until the next step.
  std::string_view Text(int column) const;

 private:
  struct Finalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  const Database& database_;
  std::unique_ptr<sqlite3_stmt, Finalizer> handle_;
};

// Everything read during its lifetime comes from one state of the file, that of the outermost one's beginning.
class ReadTransaction {
 public:
  // Takes the lock at once, so that what follows never waits for another program; throws platform::Error if it cannot.
  // The outermost one begins a moment of the database's Interruption.
  explicit ReadTransaction(const Database& database);
  ~ReadTransaction();
  ReadTransaction(const ReadTransaction&) = delete;
  ReadTransaction& operator=(const ReadTransaction&) = delete;

 private:
  void Begin() const;
  // Finds out what state the transaction sees, and if it cannot, because somebody was writing, begins again.
  void FindState() const;

  const Database& database_;
  bool outermost_;
};

}  // namespace stockbook::databases
