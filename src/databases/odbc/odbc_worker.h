// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace stockbook::databases {

// A thread for the calls of a driver, one after the other, so that whoever waits for one may stop waiting: a driver
// whose server keeps silent may never return. What a job uses, it owns, and it is destroyed on the thread.
class OdbcWorker {
 public:
  using Clock = std::chrono::steady_clock;

  OdbcWorker();
  // Waits for nothing: the thread ends when what was started has returned.
  ~OdbcWorker();
  OdbcWorker(const OdbcWorker&) = delete;
  OdbcWorker& operator=(const OdbcWorker&) = delete;

  // Only while no other job runs.
  void Start(std::function<void()> job);
  // Whether the job has ended, waiting for it as long as that.
  bool HasEndedWithin(Clock::duration patience);
  // What the job that ended threw, once.
  void Rethrow();

 private:
  struct Shared;
  static void Work(const std::shared_ptr<Shared>& shared);

  std::shared_ptr<Shared> shared_;
};

}  // namespace stockbook::databases
