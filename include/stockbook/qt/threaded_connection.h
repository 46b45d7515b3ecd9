// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "stockbook/base/api.h"
#include "stockbook/platform/connection.h"
#include "stockbook/qt/beside.h"

namespace stockbook::qt {

// Another connection whose statements run beside the interface: the windows go on painting, and the statement can be
// cancelled. To its user, a control say, it is that connection; it costs two changes of threads a statement. What the
// other connection does, its end included, it does on one thread, that of `beside`.
class STOCKBOOK_API ThreadedConnection : public platform::Connection {
 public:
  // From now on nobody else uses `other`. Neither may be nullptr.
  ThreadedConnection(std::shared_ptr<platform::Connection> other, std::shared_ptr<Beside> beside);
  // Waits for the other connection to close, without handling events.
  ~ThreadedConnection() override;

  // What `other` said when this was made; asks no thread.
  std::string ConnectionString() const override { return connection_string_; }
  // Throws what the other connection throws, and platform::Error of the kind kBusy while another statement runs,
  // kInterrupted in a task that was cancelled.
  platform::Recordset Execute(std::string_view statement, int options = platform::kExecuteUnspecified) override;
  // As Execute; nullptr where the other connection has no moments.
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override;
  // Both pass straight to the other connection, from whatever thread.
  void Cancel() override { other_->Cancel(); }
  std::size_t RowsRead() const override { return other_->RowsRead(); }

 private:
  void RunBeside(const std::function<void()>& run);

  std::shared_ptr<platform::Connection> other_;
  std::shared_ptr<Beside> beside_;
  std::string connection_string_;
};

}  // namespace stockbook::qt
