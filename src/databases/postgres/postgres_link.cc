// SPDX-License-Identifier: MIT
#include "databases/postgres/postgres_link.h"

#include <poll.h>

#include <chrono>
#include <thread>
#include <utility>
#include <vector>

#include "databases/postgres/postgres_errors.h"
#include "databases/postgres/server_cancel.h"

namespace stockbook::databases {
namespace {

// How soon a Cancel of another thread is seen while nothing arrives.
constexpr std::chrono::milliseconds kLook{10};
// How long a server may take to confirm that it has cancelled a statement.
constexpr std::chrono::milliseconds kCancelPatience{800};

void IgnoreNotice(void*, const PGresult*) {}

bool WaitFor(int socket, int events) {
  pollfd waited{socket, static_cast<short>(events), 0};
  return poll(&waited, 1, static_cast<int>(kLook.count())) > 0;
}

const char* FieldOf(const PGresult* result, int code) {
  const char* text = PQresultErrorField(result, code);
  return text == nullptr ? "" : text;
}

bool IsError(const PGresult* result) {
  const ExecStatusType status = PQresultStatus(result);
  return status != PGRES_TUPLES_OK && status != PGRES_COMMAND_OK;
}

}  // namespace

PostgresLink::PostgresLink(const PostgresSettings& settings, const Interruption& interruption)
    : server_(settings.server), interruption_(interruption) {
  std::vector<const char*> keys;
  std::vector<const char*> values;
  // libpq takes the last of two, so what stands first is what a host may change.
  keys.push_back("fallback_application_name");
  values.push_back("Stockbook");
  for (const auto& [key, value] : settings.parameters) {
    keys.push_back(key.c_str());
    values.push_back(value.c_str());
  }
  keys.push_back("client_encoding");
  values.push_back("UTF8");
  keys.push_back(nullptr);
  values.push_back(nullptr);
  interruption_.Check();
  handle_.reset(PQconnectStartParams(keys.data(), values.data(), 0));
  if (!handle_) throw platform::Error("Open", "内存不足，无法连接数据库", 0, platform::ErrorKind::kMemory);
  PQsetNoticeReceiver(handle_.get(), IgnoreNotice, nullptr);
  // A message while connecting is then nothing but the state, whatever the server's language is.
  PQsetErrorVerbosity(handle_.get(), PQERRORS_SQLSTATE);
  Connect();
  PQsetErrorVerbosity(handle_.get(), PQERRORS_DEFAULT);
  PQsetnonblocking(handle_.get(), 1);
}

PostgresLink::~PostgresLink() = default;

void PostgresLink::Connect() {
  PostgresPollingStatusType step =
      PQstatus(handle_.get()) == CONNECTION_BAD ? PGRES_POLLING_FAILED : PGRES_POLLING_WRITING;
  while (step != PGRES_POLLING_OK && step != PGRES_POLLING_FAILED) {
    const bool ready = WaitFor(PQsocket(handle_.get()), step == PGRES_POLLING_READING ? POLLIN : POLLOUT);
    if (interruption_.IsDue()) throw interruption_.Reason("Open");
    if (ready) step = PQconnectPoll(handle_.get());
  }
  if (step == PGRES_POLLING_OK) return;
  if (PQconnectionNeedsPassword(handle_.get()) != 0) {
    throw platform::Error("Open", "无法连接数据库服务器“" + server_ + "”：需要密码，请给出 Password", 0,
                          platform::ErrorKind::kInputOutput, "28P01");
  }
  const std::string message = PQerrorMessage(handle_.get());
  throw ErrorOfConnecting(server_, SqlStateIn(message), message);
}

platform::Error PostgresLink::Lost() const {
  return {"Execute", "与数据库服务器“" + server_ + "”的连接已断开，请检查服务器和网络，然后重新读账", 0,
          platform::ErrorKind::kInputOutput, "08006"};
}

void PostgresLink::WaitForSocket(Wish wish) {
  const int socket = PQsocket(handle_.get());
  if (socket < 0) throw Lost();
  WaitFor(socket, wish == Wish::kRead ? POLLIN : POLLIN | POLLOUT);
}

void PostgresLink::Flush() {
  for (int left = PQflush(handle_.get()); left != 0; left = PQflush(handle_.get())) {
    if (left < 0) throw Lost();
    WaitForSocket(Wish::kWriteOrRead);
    // A server that wants to be read before it reads on would otherwise never do so.
    if (PQconsumeInput(handle_.get()) == 0) throw Lost();
    if (interruption_.IsDue()) GiveUp();
  }
}

bool PostgresLink::AwaitAnswer() {
  while (PQisBusy(handle_.get()) != 0) {
    if (interruption_.IsDue()) return false;
    WaitForSocket(Wish::kRead);
    if (PQconsumeInput(handle_.get()) == 0) break;  // the result says so
  }
  return true;
}

// Ends what the server does, so that the link can be used on; or gives the link up.
void PostgresLink::Stop() {
  const ServerCancel cancel(handle_.get());
  const auto until = std::chrono::steady_clock::now() + kCancelPatience;
  bool answered = false;
  // A cancellation that is still under way would hit the next statement.
  while (!answered || !cancel.IsDone()) {
    if (std::chrono::steady_clock::now() >= until) GiveUp();
    if (answered) {
      std::this_thread::sleep_for(std::chrono::milliseconds{1});
      continue;
    }
    if (PQisBusy(handle_.get()) != 0) {
      WaitForSocket(Wish::kRead);
      if (PQconsumeInput(handle_.get()) == 0) GiveUp();
      continue;
    }
    answered = !PostgresResult(PQgetResult(handle_.get()));
  }
  throw interruption_.Reason("Execute");
}

void PostgresLink::GiveUp() {
  const platform::Error reason = interruption_.Reason("Execute");
  handle_.reset();
  throw reason;
}

PostgresResult PostgresLink::TakeAnswer() {
  PostgresResult answer;
  PostgresResult refusal;
  for (;;) {
    if (!AwaitAnswer()) Stop();
    PostgresResult next(PQgetResult(handle_.get()));
    if (!next) break;
    PostgresResult& kept = IsError(next.get()) ? refusal : answer;
    if (!kept) kept = std::move(next);
  }
  if (!refusal) {
    if (!answer) throw Lost();
    return answer;
  }
  const std::string state = FieldOf(refusal.get(), PG_DIAG_SQLSTATE);
  if (state.empty()) throw Lost();
  // The server's own clock may be a little ahead of ours.
  if (KindOfSqlState(state) == platform::ErrorKind::kInterrupted && interruption_.IsDue()) {
    throw interruption_.Reason("Execute");
  }
  throw ErrorOfSqlState("Execute", state, FieldOf(refusal.get(), PG_DIAG_MESSAGE_PRIMARY));
}

void PostgresLink::TakeOwed() {
  if (owed_ == Owed::kNothing) return;
  const Owed owed = std::exchange(owed_, Owed::kNothing);
  try {
    Flush();
    TakeAnswer();
  } catch (const platform::Error&) {
    if (owed == Owed::kPosted || IsLost()) throw;
  }
}

void PostgresLink::Send(const std::string& statement, WireFormat format) {
  if (IsLost()) throw Lost();
  TakeOwed();
  if (PQsendQueryParams(handle_.get(), statement.c_str(), 0, nullptr, nullptr, nullptr, nullptr,
                        static_cast<int>(format)) == 0) {
    throw Lost();
  }
  owed_ = Owed::kAnswer;
  Flush();
}

PostgresResult PostgresLink::Receive() {
  owed_ = Owed::kNothing;
  return TakeAnswer();
}

PostgresResult PostgresLink::Ask(const std::string& statement, WireFormat format) {
  Send(statement, format);
  return Receive();
}

void PostgresLink::Run(const std::string& statements) {
  Post(statements);
  TakeOwed();
}

void PostgresLink::Post(const std::string& statements) {
  if (IsLost()) throw Lost();
  TakeOwed();
  if (PQsendQuery(handle_.get(), statements.c_str()) == 0) throw Lost();
  owed_ = Owed::kPosted;
  PQflush(handle_.get());
}

std::string PostgresLink::ServerParameter(const char* name) const {
  const char* value = PQparameterStatus(handle_.get(), name);
  return value == nullptr ? "" : value;
}

}  // namespace stockbook::databases
