// SPDX-License-Identifier: MIT
#include "databases/postgres/server_cancel.h"

#include <array>
#include <system_error>
#include <thread>
#include <utility>

namespace stockbook::databases {
namespace {

struct CancelFreer {
  void operator()(PGcancel* cancel) const { PQfreeCancel(cancel); }
};

}  // namespace

ServerCancel::ServerCancel(PGconn* connection) {
  std::unique_ptr<PGcancel, CancelFreer> cancel(PQgetCancel(connection));
  if (!cancel) return;
  try {
    std::thread([cancel = std::move(cancel), done = done_] {
      std::array<char, 256> ignored{};
      PQcancel(cancel.get(), ignored.data(), static_cast<int>(ignored.size()));
      done->store(true, std::memory_order_release);
    }).detach();
  } catch (const std::system_error&) {
    // Without a thread nothing is asked, and the link is given up.
  }
}

}  // namespace stockbook::databases
