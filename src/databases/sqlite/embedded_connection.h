// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "databases/dialect/target.h"
#include "databases/sqlite/catalog.h"
#include "databases/sqlite/database.h"
#include "databases/sqlite/embedded_settings.h"
#include "databases/sqlite/readers.h"
#include "stockbook/platform/connection.h"

namespace stockbook::databases {

// How rows are found. kStatement leaves everything to SQLite. kFastest takes the quickest way that is certain to give
// the same result; kArms leaves the arms of a union to SQLite, and only kTables reads the tables separately.
enum class Strategy { kFastest, kStatement, kArms };

// An inventory in one SQLite file: Provider=Stockbook.Embedded;Data Source=FILE, and what EmbeddedSettings tells. It
// understands the desktop dialect, or the server dialect when the connection string contains "SQL". Opened read only,
// one SELECT per call, called by one thread at a time; Cancel and RowsRead alone may come from another. Long results
// are read on as many threads as the settings say, and are what one would have read. A result is complete when Execute
// returns and does not follow later changes of the file. A moment is a read transaction: in rollback mode it holds off
// writers until it ends.
class EmbeddedConnection : public platform::Connection {
 public:
  explicit EmbeddedConnection(std::string connection_string, Strategy strategy = Strategy::kFastest);
  // With settings that do not come from the string, for a file that stands in for what the string names.
  EmbeddedConnection(std::string connection_string, Strategy strategy, const EmbeddedSettings& settings);

  std::string ConnectionString() const override { return connection_string_; }
  platform::Recordset Execute(std::string_view statement, int options = platform::kExecuteUnspecified) override;
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override;
  void Cancel() override { database_.interruption().Cancel(); }
  size_t RowsRead() const override { return database_.interruption().RowsRead(); }

 private:
  platform::Recordset ExecuteChecked(std::string_view statement);

  std::string connection_string_;
  Strategy strategy_;
  Dialect dialect_;
  Ampersand ampersand_;
  Database database_;
  Readers readers_;
  Catalog catalog_;
};

}  // namespace stockbook::databases
