// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "databases/execution/interruption.h"
#include "databases/postgres/client_library.h"
#include "databases/postgres/postgres_settings.h"

namespace stockbook::databases {

struct ResultClearer {
  void operator()(PGresult* result) const { PQclear(result); }
};
using PostgresResult = std::unique_ptr<PGresult, ResultClearer>;

enum class WireFormat : int { kText = 0, kBinary = 1 };

// One connection to a server, which nothing waits for longer than its Interruption allows: whether the server computes,
// is stopped, or its network is silent. A statement that has to end is cancelled at the server; if the server does not
// confirm that soon, the link is given up and IsLost. Every function throws platform::Error, and of a lost link none
// works again.
class PostgresLink {
 public:
  // Connects; call it, like all else, while a statement of the interruption runs.
  PostgresLink(const PostgresSettings& settings, const Interruption& interruption);
  ~PostgresLink();
  PostgresLink(const PostgresLink&) = delete;
  PostgresLink& operator=(const PostgresLink&) = delete;

  bool IsLost() const { return PQstatus(handle_.get()) != CONNECTION_OK; }

  // Sends one statement, whose answer Receive takes: by the extended protocol, where two are an error. An answer that
  // was not taken is dropped by whatever is sent next.
  void Send(const std::string& statement, WireFormat format);
  PostgresResult Receive();
  PostgresResult Ask(const std::string& statement, WireFormat format);
  // Runs statements of the program's own, with semicolons between them.
  void Run(const std::string& statements);
  // The same without waiting: whatever is sent next takes the answer, and its error, first.
  void Post(const std::string& statements);
  // What the server said of itself when the link was made, or "".
  std::string ServerParameter(const char* name) const;

 private:
  enum class Wish { kRead, kWriteOrRead };
  enum class Owed { kNothing, kAnswer, kPosted };

  void Connect();
  void WaitForSocket(Wish wish);
  bool AwaitAnswer();
  void Flush();
  void TakeOwed();
  PostgresResult TakeAnswer();
  [[noreturn]] void Stop();
  [[noreturn]] void GiveUp();
  platform::Error Lost() const;

  struct Closer {
    void operator()(PGconn* handle) const { PQfinish(handle); }
  };
  const std::string server_;
  const Interruption& interruption_;
  std::unique_ptr<PGconn, Closer> handle_;
  Owed owed_ = Owed::kNothing;
};

}  // namespace stockbook::databases
