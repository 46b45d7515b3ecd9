// SPDX-License-Identifier: MIT
#include "stockbook/databases/odbc/odbc_connection.h"

#include <mutex>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "databases/dialect/postgres_emitter.h"
#include "databases/dialect/server_emitter.h"
#include "databases/execution/translated_execution.h"
#include "databases/odbc/odbc_catalog.h"
#include "databases/odbc/odbc_mirror.h"
#include "databases/odbc/odbc_session.h"
#include "databases/odbc/odbc_settings.h"
#include "stockbook/base/money.h"

namespace stockbook::databases {
namespace {

class OdbcConnection : public platform::Connection {
 public:
  explicit OdbcConnection(std::string_view connection_string)
      : settings_(ReadOdbcSettings(connection_string)),
        interruption_(settings_.time_limit),
        catalog_(settings_.tables) {
    const Interruption::Running running(interruption_);
    interruption_.BeginMoment();
    Connect();
  }

  std::string ConnectionString() const override { return settings_.shown; }
  platform::Recordset Execute(std::string_view statement, int) override;
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override;
  void Cancel() override;
  size_t RowsRead() const override { return interruption_.RowsRead(); }

 private:
  class Reading;
  class Watched;

  void Connect() { session_ = std::make_unique<OdbcSession>(settings_, interruption_); }
  void BeginReading();
  void EndReading();
  platform::Recordset Run(std::string_view statement);
  platform::Recordset RunTranslated(std::string_view statement, const Emitter& emitter);
  platform::Recordset RunOnCopy(std::string_view statement);

  OdbcSettings settings_;
  Interruption interruption_;
  OdbcCatalog catalog_;
  std::unique_ptr<OdbcSession> session_;
  int readings_ = 0;
  std::mutex mutex_;  // of what follows
  platform::Connection* running_on_copy_ = nullptr;
};

// A transaction, or a part of the one that is there.
class OdbcConnection::Reading : public platform::Moment {
 public:
  explicit Reading(OdbcConnection& connection) : connection_(connection) { connection_.BeginReading(); }
  ~Reading() override { connection_.EndReading(); }
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

 private:
  OdbcConnection& connection_;
};

// While one lives, Cancel reaches the copy, too.
class OdbcConnection::Watched {
 public:
  Watched(OdbcConnection& connection, platform::Connection& copy) : connection_(connection) { Set(&copy); }
  ~Watched() { Set(nullptr); }
  Watched(const Watched&) = delete;
  Watched& operator=(const Watched&) = delete;

 private:
  void Set(platform::Connection* copy) {
    const std::lock_guard lock(connection_.mutex_);
    connection_.running_on_copy_ = copy;
  }
  OdbcConnection& connection_;
};

// A server that was restarted since has forgotten the session, and only the first call notices.
void OdbcConnection::BeginReading() {
  if (readings_ == 0) {
    interruption_.BeginMoment();
    const bool used_before = session_->IsOpen();
    if (!used_before) Connect();
    try {
      session_->Begin();
    } catch (const platform::Error&) {
      if (!used_before || session_->IsOpen() || interruption_.IsDue()) throw;
      Connect();
      session_->Begin();
    }
  }
  ++readings_;
}

void OdbcConnection::EndReading() {
  if (--readings_ == 0) session_->Rollback();
}

std::unique_ptr<platform::Moment> OdbcConnection::ReadAsOfOneMoment() {
  const Interruption::Running running(interruption_);
  auto reading = std::make_unique<Reading>(*this);
  if (!session_->info().reads_moments) return nullptr;
  return reading;
}

platform::Recordset OdbcConnection::Execute(std::string_view statement, int) {
  constexpr size_t kMostBytes = size_t{8} << 20;
  const Interruption::Running running(interruption_);
  if (statement.size() > kMostBytes) throw platform::Error("Execute", "语句太长，最多 8 MB，请缩小查询的范围");
  try {
    const Reading reading(*this);
    interruption_.Check();
    return Run(statement);
  } catch (const base::ArithmeticError& error) {
    throw platform::Error("Execute", error.what());
  } catch (const std::bad_alloc&) {
    throw platform::Error("Execute", "内存不足，结果的行数太多，请缩小查询的范围", 0, platform::ErrorKind::kMemory);
  }
}

platform::Recordset OdbcConnection::Run(std::string_view statement) {
  try {
    switch (session_->info().engine) {
      case OdbcEngine::kPostgres:
        return RunTranslated(statement, PostgresEmitter());
      case OdbcEngine::kSqlServer:
        return RunTranslated(statement, ServerEmitter());
      case OdbcEngine::kSqlite:
      case OdbcEngine::kOther:
        break;
    }
    return RunOnCopy(statement);
  } catch (const platform::Error& error) {
    // What the statement was refused for may have changed; it is looked up again.
    if (!error.IsOfEngine()) catalog_.Forget();
    throw;
  }
}

platform::Recordset OdbcConnection::RunTranslated(std::string_view statement, const Emitter& emitter) {
  const auto ampersand = settings_.joins_ampersand ? Ampersand::kJoinsTexts : Ampersand::kServerRefusesTexts;
  const auto find_table = [this](std::string_view name) {
    const OdbcTable* table = catalog_.Find(*session_, name);
    return table == nullptr ? nullptr : &table->schema;
  };
  return ExecuteTranslated(statement, {settings_.dialect, emitter, ampersand}, find_table, *session_, interruption_);
}

platform::Recordset OdbcConnection::RunOnCopy(std::string_view statement) {
  OdbcMirror mirror(*session_, catalog_);
  mirror.Copy(statement, settings_.dialect);
  const auto copy = mirror.Open(settings_, interruption_);
  const Watched watched(*this, *copy);
  try {
    interruption_.Check();
    return copy->Execute(statement);
  } catch (const platform::Error&) {
    // The copy only knows what was left of the time.
    interruption_.Check();
    throw;
  }
}

void OdbcConnection::Cancel() {
  interruption_.Cancel();
  const std::lock_guard lock(mutex_);
  if (running_on_copy_ != nullptr) running_on_copy_->Cancel();
}

}  // namespace

std::unique_ptr<platform::Connection> OpenOdbc(std::string_view connection_string) {
  return std::make_unique<OdbcConnection>(connection_string);
}

}  // namespace stockbook::databases
