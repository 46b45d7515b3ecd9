// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "databases/database_file.h"
#include "databases/dialect/dialect.h"
#include "stockbook/platform/connection.h"

namespace stockbook::testing {

// A database of one kind with the tables of an inventory in it, for one test.
class BackEnd {
 public:
  BackEnd() = default;
  BackEnd(const BackEnd&) = delete;
  BackEnd& operator=(const BackEnd&) = delete;
  virtual ~BackEnd() = default;

  // What a host hands to OpenConnection, so that the control sends the dialect.
  virtual std::string ConnectionString(databases::Dialect dialect) const = 0;
  // Opens such a string, perhaps with more settings at its end.
  virtual std::unique_ptr<platform::Connection> Open(const std::string& connection_string) const;
  // Changes the database as another program would, in plain SQL; false where nothing here can.
  virtual bool Change(const std::string& sql) = 0;
};

// The kinds that nothing here can write hold one inventory, which is kept beside the sources. Fills the file with the
// same one for such a kind; false for the others, and where it is not there.
bool FillAsKept(const std::string& kind, DatabaseFile& file);

// The kinds that the contract is held against, such as "Embedded" and "Postgres".
std::vector<std::string> BackEndKinds();
// These, and those that have the tables of an inventory alone: "Rows", a host's own objects, and "RowColumns", which a
// host gives as whole columns.
std::vector<std::string> InventoryKinds();
bool IsOfRows(const std::string& kind);

// A database of the kind with the tables and rows of the file; nullptr, and why, where this machine has none.
std::unique_ptr<BackEnd> MakeBackEnd(const std::string& kind, const DatabaseFile& file, std::string& missing);

}  // namespace stockbook::testing
