// SPDX-License-Identifier: MIT
#include "databases/desktop/desktop_connection.h"

#include <utility>

#include "databases/connection_string.h"
#include "databases/desktop/source_copy.h"

namespace stockbook::databases {

class DesktopConnection::Reading : public platform::Moment {
 public:
  Reading(DesktopConnection& connection, std::unique_ptr<platform::Moment> moment)
      : connection_(connection), moment_(std::move(moment)) {
    ++connection_.moments_;
  }
  ~Reading() override {
    moment_.reset();
    --connection_.moments_;
  }

 private:
  DesktopConnection& connection_;
  std::unique_ptr<platform::Moment> moment_;
};

DesktopConnection::DesktopConnection(std::string_view connection_string)
    : connection_string_(WithoutPassword(connection_string)),
      settings_(ReadDesktopSettings(connection_string)),
      interruption_(settings_.embedded.time_limit) {
  const Interruption::Running running(interruption_);
  OpenCopy("Open");
}

platform::Recordset DesktopConnection::Execute(std::string_view statement, int options) {
  const Interruption::Running running(interruption_);
  Follow("Execute");
  try {
    platform::Recordset rows = embedded_->Execute(statement, options);
    // Cancelled just before the embedded engine began.
    if (interruption_.WasCancelled()) throw interruption_.Reason("Execute");
    return rows;
  } catch (const platform::Error& error) {
    if (error.kind() == platform::ErrorKind::kDamaged) {
      // The next statement has another copy.
      copy_->Discard();
      state_ = {};
    }
    throw;
  }
}

std::unique_ptr<platform::Moment> DesktopConnection::ReadAsOfOneMoment() {
  const Interruption::Running running(interruption_);
  Follow("Execute");
  return std::make_unique<Reading>(*this, embedded_->ReadAsOfOneMoment());
}

void DesktopConnection::Cancel() {
  interruption_.Cancel();
  const std::lock_guard lock(mutex_);
  if (embedded_ != nullptr) embedded_->Cancel();
}

size_t DesktopConnection::RowsRead() const {
  const std::lock_guard lock(mutex_);
  return embedded_ == nullptr ? 0 : embedded_->RowsRead();
}

void DesktopConnection::Follow(const char* operation) {
  if (moments_ > 0) return;
  interruption_.BeginMoment();
  if (embedded_ != nullptr && StateOf(settings_.embedded.file, operation) == state_) return;
  OpenCopy(operation);
}

void DesktopConnection::OpenCopy(const char* operation) {
  for (int tries = 0;; ++tries) {
    SourceCopy source = CopySource(settings_, interruption_, operation);
    std::unique_ptr<EmbeddedConnection> opened;
    try {
      opened = OpenCopiedFile(*source.copy);
    } catch (const platform::Error& error) {
      // A kept copy that the disk has spoiled is made again.
      if (tries > 0 || error.kind() != platform::ErrorKind::kDamaged) throw;
      source.copy->Discard();
      continue;
    }
    {
      const std::lock_guard lock(mutex_);
      std::swap(embedded_, opened);
    }
    // Before the file it has open counts as unused.
    opened.reset();
    copy_ = std::move(source.copy);
    state_ = source.state;
    return;
  }
}

std::unique_ptr<EmbeddedConnection> DesktopConnection::OpenCopiedFile(CopyInUse& copy) const {
  EmbeddedSettings settings = settings_.embedded;
  settings.file = copy.path();
  return std::make_unique<EmbeddedConnection>(connection_string_, Strategy::kFastest, settings);
}

std::unique_ptr<platform::Connection> OpenDesktop(std::string_view connection_string) {
  return std::make_unique<DesktopConnection>(connection_string);
}

}  // namespace stockbook::databases
