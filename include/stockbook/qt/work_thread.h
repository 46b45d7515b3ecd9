// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <thread>

#include "stockbook/base/api.h"

namespace stockbook::qt {

// A thread that does one piece of work after the other. The destructor waits for all that was started.
class STOCKBOOK_API WorkThread {
 public:
  // `done` is called on the thread after every piece, when its future is ready.
  explicit WorkThread(std::function<void()> done);
  // Waits for all that was started.
  ~WorkThread();
  WorkThread(const WorkThread&) = delete;
  WorkThread& operator=(const WorkThread&) = delete;

  // The future is ready when the work is done, and throws what the work threw.
  std::future<void> Start(std::function<void()> work);

 private:
  void DoAll();

  std::function<void()> done_;
  std::mutex mutex_;  // of what follows
  std::condition_variable changed_;
  std::deque<std::packaged_task<void()>> waiting_;
  bool ends_ = false;
  std::thread thread_;  // last, since it uses the others
};

}  // namespace stockbook::qt
