// SPDX-License-Identifier: MIT
#include "databases/odbc/odbc_session.h"

#include <chrono>
#include <optional>
#include <stdexcept>
#include <thread>
#include <utility>

#include "base/number.h"
#include "databases/odbc/driver_manager.h"
#include "databases/odbc/odbc_decoding.h"
#include "databases/sqlite/error_codes.h"

namespace stockbook::databases {
namespace {

using std::chrono::milliseconds;

// How long a driver may take to notice that it was cancelled, and to free what it holds.
constexpr milliseconds kGrace{1000};
constexpr milliseconds kTick{10};

// Keeps the rows apart until they are all there: they may have to be read again.
class OdbcSinkTaker : public OdbcRowTaker {
 public:
  explicit OdbcSinkTaker(std::span<const ValueClass> classes) : classes_(classes) {}

  void Begin(size_t columns) override {
    if (columns != classes_.size()) throw std::logic_error("a statement has other columns than its translation says");
    taken_ = std::vector<ColumnSink>(columns);
    rows_ = 0;
  }
  void Take(const OdbcRowset& block) override {
    for (size_t index = 0; index < taken_.size(); ++index) AppendColumn(block, index, classes_[index], taken_[index]);
    rows_ += block.rows();
  }
  size_t HandOver(std::span<ColumnSink> sinks) {
    for (size_t index = 0; index < taken_.size(); ++index) {
      ColumnSink& sink = sinks[index];
      sink.mended = sink.mended || taken_[index].mended;
      if (sink.builder.size() == 0) {
        sink.builder = std::move(taken_[index].builder);
        continue;
      }
      const columns::Column column = taken_[index].builder.Finish();
      std::vector<uint32_t> codes;
      for (size_t row = 0; row < rows_; ++row) sink.builder.AppendFrom(column, row, codes);
    }
    return rows_;
  }

 private:
  std::span<const ValueClass> classes_;
  std::vector<ColumnSink> taken_;
  size_t rows_ = 0;
};

}  // namespace

OdbcSession::OdbcSession(const OdbcSettings& settings, Interruption& interruption)
    : interruption_(interruption), worker_(std::make_unique<OdbcWorker>()) {
  // Later than the deadline here, so that a statement which was left behind does not run for ever.
  if (settings.time_limit)
    query_seconds_ = static_cast<SQLULEN>(std::chrono::ceil<std::chrono::seconds>(*settings.time_limit).count()) + 1;
  const auto opened = std::make_shared<std::shared_ptr<OdbcLink>>();
  Run([opened, settings] { *opened = std::make_shared<OdbcLink>(settings); }, "Open");
  link_ = std::move(*opened);
  info_ = link_->info();
}

OdbcSession::~OdbcSession() {
  if (link_ == nullptr) return;
  Settle();
  if (link_ == nullptr) return;
  worker_->Start([statement = std::move(statement_), link = std::move(link_)]() mutable {
    statement.reset();
    link.reset();
  });
  worker_->HasEndedWithin(kGrace);
}

void OdbcSession::Run(std::function<void()> job, const char* operation) {
  if (worker_ == nullptr)
    throw platform::Error(operation, "与数据库的连接已断开，请重试", 0, platform::ErrorKind::kInputOutput);
  worker_->Start(std::move(job));
  Await(operation);
}

void OdbcSession::Await(const char* operation) {
  std::optional<OdbcWorker::Clock::time_point> asked;
  while (!worker_->HasEndedWithin(kTick)) {
    const auto now = OdbcWorker::Clock::now();
    if (!asked && interruption_.IsDue()) {
      asked = now;
      RequestCancel();
    }
    if (asked && (statement_ == nullptr || now - *asked >= kGrace)) {
      Leave();
      throw interruption_.Reason(operation);
    }
  }
  try {
    worker_->Rethrow();
  } catch (const OdbcFailure& failure) {
    if (failure.lost || failure.opening) Leave();
    if (interruption_.IsDue()) throw interruption_.Reason(operation);
    throw ErrorOf(failure);
  }
}

// By a thread of its own: the driver manager may make it wait for the very call that it is to end.
void OdbcSession::RequestCancel() {
  if (statement_ == nullptr) return;
  std::thread([statement = statement_] { SQLCancel(statement->handle()); }).detach();
}

// The thread keeps what the driver may still be using, and frees it when the driver returns.
void OdbcSession::Leave() {
  if (worker_ != nullptr && worker_->HasEndedWithin({})) {
    worker_->Start([statement = std::move(statement_), link = std::move(link_)]() mutable {
      statement.reset();
      link.reset();
    });
  }
  worker_.reset();
  statement_.reset();
  link_.reset();
}

platform::Error OdbcSession::ErrorOf(const OdbcFailure& failure) const {
  if (failure.opening) return OpenErrorOf(failure.diagnosis);
  if (failure.lost) return LostErrorOf(failure.diagnosis);
  auto kind = KindOfState(failure.diagnosis.state);
  if (info_.engine == OdbcEngine::kSqlite && failure.diagnosis.native > 0) kind = KindOfCode(failure.diagnosis.native);
  return ExecuteErrorOf(failure.diagnosis, kind);
}

void OdbcSession::Begin() {
  Run([link = link_] { link->Begin(); }, "Execute");
}

void OdbcSession::Rollback() {
  if (!IsOpen()) return;
  worker_->Start([link = link_] { link->Rollback(); });
  bool failed = !worker_->HasEndedWithin(kGrace);
  try {
    if (!failed) worker_->Rethrow();
  } catch (const OdbcFailure&) {
    failed = true;
  }
  if (failed) Leave();
}

size_t OdbcSession::Read(std::string_view sql, std::span<const ValueClass> classes, std::span<ColumnSink> sinks) {
  OdbcSinkTaker taker(classes);
  Stream(sql, taker);
  return taker.HandOver(sinks);
}

void OdbcSession::Stream(std::string_view sql, OdbcRowTaker& taker) {
  StreamFrom([text = std::string(sql)](const OdbcStatement& statement) { return statement.Execute(text); }, taker);
}

void OdbcSession::StreamFrom(const Starter& start, OdbcRowTaker& taker) {
  std::vector<OdbcColumn> columns;
  try {
    for (;;) {
      Open(start);
      if (columns.empty()) columns = Describe();
      taker.Begin(columns.size());
      if (TakeRows(columns, taker) == Took::kAll) break;
      Close();
    }
  } catch (...) {
    Settle();
    Close();
    throw;
  }
  Close();
}

void OdbcSession::Open(const Starter& start) {
  const auto opened = std::make_shared<std::shared_ptr<OdbcStatement>>();
  Run([opened, link = link_] { *opened = std::make_shared<OdbcStatement>(link); }, "Execute");
  statement_ = std::move(*opened);
  Run(
      [statement = statement_, start, seconds = query_seconds_] {
        const auto limit = reinterpret_cast<SQLPOINTER>(seconds);  // NOLINT(performance-no-int-to-ptr)
        if (seconds > 0) SQLSetStmtAttrW(statement->handle(), SQL_ATTR_QUERY_TIMEOUT, limit, 0);
        statement->Check(start(*statement));
      },
      "Execute");
}

std::vector<OdbcColumn> OdbcSession::Describe() {
  const auto columns = std::make_shared<std::vector<OdbcColumn>>();
  Run([columns, statement = statement_] { *columns = DescribeColumns(*statement); }, "Execute");
  return std::move(*columns);
}

void OdbcSession::StartFetch(const std::shared_ptr<OdbcRowset>& block) {
  worker_->Start([block, statement = statement_] { block->Fetch(*statement); });
}

OdbcSession::Took OdbcSession::TakeRows(std::vector<OdbcColumn>& columns, OdbcRowTaker& taker) {
  constexpr size_t kMostWidth = size_t{64} << 20;
  auto block = std::make_shared<OdbcRowset>(columns);
  auto next = std::make_shared<OdbcRowset>(columns);
  StartFetch(block);
  Await("Execute");
  while (block->rows() > 0) {
    if (block->wider()) {
      columns = *block->wider();
      for (const OdbcColumn& column : columns) {
        if (column.width > kMostWidth)
          throw platform::Error("Execute", "字段“" + column.name + "”中的文字太长，最多 16 MB，请缩短它");
      }
      return Took::kTooNarrow;
    }
    StartFetch(next);
    taker.Take(*block);
    interruption_.CountRows(block->rows());
    Await("Execute");
    interruption_.Check();
    std::swap(block, next);
  }
  return Took::kAll;
}

// After an exception the thread may still be fetching.
void OdbcSession::Settle() {
  if (worker_ == nullptr || worker_->HasEndedWithin({})) return;
  RequestCancel();
  if (!worker_->HasEndedWithin(kGrace)) Leave();
}

void OdbcSession::Close() {
  if (statement_ == nullptr || !IsOpen()) return;
  worker_->Start([statement = std::move(statement_)]() mutable { statement.reset(); });
  statement_ = nullptr;
  if (!worker_->HasEndedWithin(5 * kGrace)) Leave();
}

}  // namespace stockbook::databases
