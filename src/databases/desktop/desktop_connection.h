// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "databases/desktop/copy_in_use.h"
#include "databases/desktop/desktop_settings.h"
#include "databases/desktop/source_state.h"
#include "databases/execution/interruption.h"
#include "databases/sqlite/embedded_connection.h"
#include "stockbook/platform/connection.h"

namespace stockbook::databases {

// An inventory in a desktop database file (.mdb or .accdb): Provider=Stockbook.Desktop;Data Source=FILE, and what
// DesktopSettings tells. The file is only ever read, and copied into an embedded database, which runs the statements.
// The copy is made anew when the file has changed, but never within a moment; as long as it has not, opening costs
// little more than opening the copy. The dialect is the desktop one unless the connection string contains "SQL". One
// thread; Cancel, which stops the copying as well, and RowsRead alone may come from another.
class DesktopConnection : public platform::Connection {
 public:
  explicit DesktopConnection(std::string_view connection_string);

  std::string ConnectionString() const override { return connection_string_; }
  platform::Recordset Execute(std::string_view statement, int options = platform::kExecuteUnspecified) override;
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override;
  void Cancel() override;
  size_t RowsRead() const override;

 private:
  class Reading;

  // Follows the file, unless a moment is under way.
  void Follow(const char* operation);
  void OpenCopy(const char* operation);
  std::unique_ptr<EmbeddedConnection> OpenCopiedFile(CopyInUse& copy) const;

  std::string connection_string_;
  DesktopSettings settings_;
  Interruption interruption_;
  SourceState state_;
  int moments_ = 0;
  std::unique_ptr<CopyInUse> copy_;
  mutable std::mutex mutex_;  // of the pointer that follows, for Cancel and RowsRead
  std::unique_ptr<EmbeddedConnection> embedded_;
};

// Throws platform::Error when the text is no connection string of a desktop file or the file cannot be read.
std::unique_ptr<platform::Connection> OpenDesktop(std::string_view connection_string);

}  // namespace stockbook::databases
