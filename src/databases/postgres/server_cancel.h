// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <memory>

#include "databases/postgres/client_library.h"

namespace stockbook::databases {

// Asks a server to end the statement that a connection waits for. libpq does that over a connection of its own and
// waits for the server to close it, which a stopped server never does; so the request has a thread of its own, which
// nobody waits for and which ends at the latest when that connection does.
class ServerCancel {
 public:
  explicit ServerCancel(PGconn* connection);

  // Whether the server has acted on the request, or refused it.
  bool IsDone() const { return done_->load(std::memory_order_acquire); }

 private:
  std::shared_ptr<std::atomic<bool>> done_ = std::make_shared<std::atomic<bool>>(false);
};

}  // namespace stockbook::databases
