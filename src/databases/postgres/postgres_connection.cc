// SPDX-License-Identifier: MIT
#include "stockbook/databases/postgres/postgres_connection.h"

#include <optional>
#include <string>
#include <utility>

#include "databases/dialect/dialect.h"
#include "databases/dialect/postgres_emitter.h"
#include "databases/execution/interruption.h"
#include "databases/execution/translated_execution.h"
#include "databases/postgres/postgres_catalog.h"
#include "databases/postgres/postgres_session.h"
#include "databases/postgres/postgres_settings.h"

namespace stockbook::databases {
namespace {

class PostgresConnection : public platform::Connection {
 public:
  explicit PostgresConnection(PostgresSettings settings)
      : shown_(settings.shown), dialect_(DialectOf(shown_)), interruption_(settings.time_limit) {
    const Interruption::Running running(interruption_);
    session_.emplace(std::move(settings), interruption_);
    catalog_.emplace(*session_);
  }

  std::string ConnectionString() const override { return shown_; }
  platform::Recordset Execute(std::string_view statement, int options) override;
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override;
  void Cancel() override { interruption_.Cancel(); }
  size_t RowsRead() const override { return interruption_.RowsRead(); }

 private:
  // Its end is a statement like its beginning.
  class Reading : public platform::Moment {
   public:
    Reading(PostgresSession& session, Interruption& interruption) : interruption_(interruption) {
      const Interruption::Running running(interruption_);
      transaction_.emplace(session);
    }
    ~Reading() override {
      const Interruption::Running running(interruption_);
      transaction_.reset();
    }

   private:
    Interruption& interruption_;
    std::optional<PostgresSession::Transaction> transaction_;
  };

  std::string shown_;
  Dialect dialect_;
  PostgresEmitter emitter_;
  Interruption interruption_;
  std::optional<PostgresSession> session_;
  std::optional<PostgresCatalog> catalog_;
};

platform::Recordset PostgresConnection::Execute(std::string_view statement, int) {
  // Long enough for the keys of a million partners.
  constexpr size_t kMostBytes = size_t{8} << 20;
  if (statement.size() > kMostBytes) throw platform::Error("Execute", "语句太长，最多 8 MB，请缩小查询的范围");
  const Interruption::Running running(interruption_);
  // The catalogue and the rows are those of one moment, even if another program writes.
  const PostgresSession::Transaction transaction(*session_);
  interruption_.Check();
  catalog_->Refresh();
  return ExecuteTranslated(
      statement, {dialect_, emitter_}, [this](std::string_view name) { return catalog_->FindTable(name); }, *session_,
      interruption_);
}

std::unique_ptr<platform::Moment> PostgresConnection::ReadAsOfOneMoment() {
  return std::make_unique<Reading>(*session_, interruption_);
}

}  // namespace

std::unique_ptr<platform::Connection> OpenPostgres(std::string_view connection_string) {
  return std::make_unique<PostgresConnection>(ReadPostgresSettings(connection_string));
}

}  // namespace stockbook::databases
