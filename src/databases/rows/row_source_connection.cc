// SPDX-License-Identifier: MIT
#include <algorithm>
#include <iterator>
#include <mutex>
#include <new>
#include <stdexcept>
#include <utility>

#include "base/text.h"
#include "databases/connection_string.h"
#include "databases/dialect/parser.h"
#include "databases/dialect/refusal.h"
#include "databases/rows/row_filling.h"
#include "databases/sqlite/embedded_connection.h"
#include "stockbook/databases/rows/row_source.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

constexpr std::string_view kKnown[] = {"Timeout", "Threads", "Tables", "AmpersandJoins"};

std::string StringOf(std::string_view settings) {
  std::string text = "Provider=Stockbook.Rows";
  if (!settings.empty()) text.append(";").append(settings);
  return text;
}

void ExpectKnown(std::string_view settings) {
  const ConnectionString written(settings);
  for (const auto& [key, value] : written.settings()) {
    const std::string& name = key;
    const bool known = base::EqualsIgnoringCase(key, "Dialect")
                           ? value == "SQL"
                           : std::any_of(std::begin(kKnown), std::end(kKnown), [&name](std::string_view each) {
                               return base::EqualsIgnoringCase(name, each);
                             });
    if (!known) {
      throw platform::Error("Open", "OpenRowSource 不认识设置“" + key + "=" + value +
                                        "”：可以写 Timeout=秒数、Threads=个数、AmpersandJoins=1、Dialect=SQL。");
    }
  }
}

// The file is another one for each statement.
EmbeddedSettings SettingsOf(std::string_view settings) {
  ExpectKnown(settings);
  return ReadEmbeddedSettings("Provider=Stockbook.Embedded;Data Source=:memory:;" + std::string(settings));
}

class RowSourceConnection : public platform::Connection {
 public:
  RowSourceConnection(std::shared_ptr<RowSource> source, std::string_view settings)
      : source_(std::move(source)),
        connection_string_(StringOf(settings)),
        settings_(SettingsOf(settings)),
        interruption_(settings_.time_limit) {
    if (source_ == nullptr) throw std::invalid_argument("OpenRowSource needs a source.");
  }

  std::string ConnectionString() const override { return connection_string_; }
  platform::Recordset Execute(std::string_view statement, int options) override;
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override;
  void Cancel() override;
  size_t RowsRead() const override { return interruption_.RowsRead(); }

 private:
  class Reading;
  class Watched;

  platform::Recordset Run(std::string_view statement, int options);
  Query Parse(std::string_view statement) const;

  std::shared_ptr<RowSource> source_;
  std::string connection_string_;
  EmbeddedSettings settings_;
  Interruption interruption_;
  int readings_ = 0;
  std::mutex mutex_;  // of what follows
  platform::Connection* running_ = nullptr;
};

// A moment of the source, or a part of the one that is there.
class RowSourceConnection::Reading : public platform::Moment {
 public:
  explicit Reading(RowSourceConnection& connection) : connection_(connection), source_(connection.source_) {
    if (connection_.readings_ == 0) {
      connection_.interruption_.BeginMoment();
      AskSource([&] { source_->BeginMoment(); });
    }
    ++connection_.readings_;
  }
  ~Reading() override {
    if (--connection_.readings_ == 0) source_->EndMoment();
  }
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

 private:
  RowSourceConnection& connection_;
  std::shared_ptr<RowSource> source_;
};

// While one lives, Cancel reaches the engine, too.
class RowSourceConnection::Watched {
 public:
  Watched(RowSourceConnection& connection, platform::Connection& engine) : connection_(connection) { Set(&engine); }
  ~Watched() { Set(nullptr); }
  Watched(const Watched&) = delete;
  Watched& operator=(const Watched&) = delete;

 private:
  void Set(platform::Connection* engine) {
    const std::lock_guard lock(connection_.mutex_);
    connection_.running_ = engine;
  }
  RowSourceConnection& connection_;
};

platform::Recordset RowSourceConnection::Execute(std::string_view statement, int options) {
  const Interruption::Running running(interruption_);
  try {
    const Reading reading(*this);
    interruption_.Check();
    return Run(statement, options);
  } catch (const std::bad_alloc&) {
    throw platform::Error("Execute", "内存不足，结果的行数太多，请缩小查询的范围", 0, platform::ErrorKind::kMemory);
  }
}

platform::Recordset RowSourceConnection::Run(std::string_view statement, int options) {
  const Query query = Parse(statement);
  const StatementNeeds needs(query);
  const MemoryDatabase memory;
  RowFilling filling(*source_, memory, needs, interruption_);
  filling.Fill();
  const std::vector<std::string> remarks = filling.Remarks();
  EmbeddedSettings settings = settings_;
  settings.file = memory.name();
  settings.time_limit = interruption_.Remaining();
  EmbeddedConnection engine(connection_string_, Strategy::kFastest, settings);
  const Watched watched(*this, engine);
  // Cancelled just before the engine could hear of it.
  interruption_.Check();
  platform::Recordset rows = engine.Execute(statement, options);
  for (const std::string& remark : remarks) rows.AddRemark(remark);
  return rows;
}

Query RowSourceConnection::Parse(std::string_view statement) const {
  constexpr size_t kMostBytes = size_t{8} << 20;
  if (statement.size() > kMostBytes) throw platform::Error("Execute", "语句太长，最多 8 MB，请缩小查询的范围");
  const bool server = platform::IsServerDialect(connection_string_);
  try {
    return ParseStatement(statement, server ? Dialect::kServer : Dialect::kDesktop);
  } catch (const Refusal& refusal) {
    throw RefusedAt(statement, refusal);
  }
}

std::unique_ptr<platform::Moment> RowSourceConnection::ReadAsOfOneMoment() {
  const Interruption::Running running(interruption_);
  return std::make_unique<Reading>(*this);
}

void RowSourceConnection::Cancel() {
  interruption_.Cancel();
  const std::lock_guard lock(mutex_);
  if (running_ != nullptr) running_->Cancel();
}

}  // namespace

std::unique_ptr<platform::Connection> OpenRowSource(std::shared_ptr<RowSource> source, std::string_view settings) {
  return std::make_unique<RowSourceConnection>(std::move(source), settings);
}

}  // namespace stockbook::databases
