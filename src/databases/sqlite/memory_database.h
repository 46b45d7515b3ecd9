// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>

namespace stockbook::databases {

// A private SQLite database in memory, to be filled here and then read by an EmbeddedConnection whose Data Source is
// its name. It goes when nobody has it open any longer. Throws platform::Error when memory is out.
class MemoryDatabase {
 public:
  MemoryDatabase();

  const std::string& name() const { return name_; }
  sqlite3* handle() const { return handle_.get(); }
  void Run(const std::string& sql) const;
  // Throws unless the code is one of success.
  void Check(int code) const;

  // The name that SQLite's file system for memory knows a Data Source by, or nullptr for a file.
  static const char* NameInMemory(std::string_view data_source);
  static constexpr const char* kFileSystem = "memdb";

 private:
  struct Closer {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
  };
  std::string name_;
  std::unique_ptr<sqlite3, Closer> handle_;
};

}  // namespace stockbook::databases
