// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

#include "databases/desktop/table_sink.h"
#include "databases/execution/interruption.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {

// The copy cannot be written where it was wanted; elsewhere it may.
class CannotWriteCopy : public platform::Error {
 public:
  using platform::Error::Error;
};

// Writes tables into an SQLite file: declared types that the embedded engine classes as the desktop file's, rows in
// their order, the file's own indexes and on its keys those that journals look lines up by.
class CopyWriter : public TableSink {
 public:
  // `path` is an empty file, `source` what the copy is of. Throws CannotWriteCopy.
  CopyWriter(const std::string& path, const std::string& source, Interruption& interruption);

  void BeginTable(const DesktopTable& table) override;
  void AddIndex(const DesktopIndex& index) override { indexes_.push_back(index); }
  void AddRow(const std::vector<DesktopValue>& values) override;
  // Builds what is left to build and closes the file.
  void Finish();

 private:
  struct Closer {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  void Run(const std::string& sql);
  void EndTable();
  void AddJournalIndexes();
  void CreateIndex(const DesktopIndex& index);
  void Bind(int parameter, const DesktopValue& value);
  [[noreturn]] void Fail();

  std::string path_;
  Interruption& interruption_;
  std::unique_ptr<sqlite3, Closer> database_;
  std::unique_ptr<sqlite3_stmt, Closer> insert_;
  DesktopTable table_;
  std::vector<DesktopIndex> indexes_;
  size_t index_count_ = 0;
};

// The path of the desktop file that a copy is of; empty when it is not a copy.
std::string SourceOfCopy(const std::string& path);

}  // namespace stockbook::databases
