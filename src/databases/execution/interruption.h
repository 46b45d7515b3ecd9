// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <mutex>
#include <optional>
#include <utility>

#include "stockbook/platform/error.h"

namespace stockbook::databases {

// Ends statements that run too long, that make too much, or that somebody cancels. The time of a moment's statements
// adds up; what passes between them does not count. Cancel may be called by any thread, everything else belongs to the
// connection's own.
class Interruption {
 public:
  using Clock = std::chrono::steady_clock;

  // Without a limit only Cancel ends a statement.
  explicit Interruption(std::optional<Clock::duration> limit) : limit_(limit) {}
  // For another thread that works for the leader's statement: due when the leader is, which runs meanwhile and begins
  // no moment.
  struct Leader {
    const Interruption& interruption;
  };
  explicit Interruption(Leader leader) : leader_(&leader.interruption) {}
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  // While the outermost one lives, a statement runs.
  class Running {
   public:
    explicit Running(Interruption& interruption);
    ~Running();
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

   private:
    Interruption& interruption_;
    bool outermost_;
  };

  // A moment begins: it has everything before it. Call it while a statement runs.
  void BeginMoment();

  // Ends the statement that runs now, if there is one; a later one knows nothing of it.
  void Cancel();

  // Whether what runs has to end. Reads the clock; cheap enough for every few hundred rows.
  bool IsDue() const;
  // The time that what runs still has, never below zero; nothing without a limit.
  std::optional<Clock::duration> Left() const;
  bool WasCancelled() const {
    return leader_ != nullptr ? leader_->WasCancelled() : cancelled_.load(std::memory_order_relaxed);
  }
  // Throws Reason("Execute") if what runs has to end. Loops over rows outside of SQLite call it now and then.
  void Check() const;
  // What is left of the time, for work that is handed to somebody else; nothing without a limit.
  std::optional<Clock::duration> Remaining() const;
  // Counts work of any size, a call of a function being 1, and asks IsDue once enough has come together.
  bool IsDueAfter(size_t work);
  // Counts the bytes of a text that a function made; false once those of the moment are more than a result can use.
  bool MayMake(size_t bytes);
  // Counts rows that were read, for whoever asks how far a statement is. Any thread may do both.
  void CountRows(size_t rows) const;
  size_t RowsRead() const { return rows_.load(std::memory_order_relaxed); }
  // What was counted since the last call, for whoever adds it up.
  size_t TakeMade() { return std::exchange(made_, 0); }
  // Waits a little for another program's lock; false once it has been long enough. `tries` counts from 0 for each lock.
  bool WaitForLock(int tries);

  platform::Error Reason(const char* operation) const;

 private:
  const Interruption* const leader_ = nullptr;
  const std::optional<Clock::duration> limit_;
  Clock::duration used_{};  // by the moment's statements before the one that runs
  Clock::time_point started_;
  Clock::time_point lock_met_;
  size_t work_ = 0;
  size_t made_ = 0;
  mutable std::atomic<size_t> rows_ = 0;
  std::mutex mutex_;  // of what follows
  bool running_ = false;
  std::atomic<bool> cancelled_ = false;
};

}  // namespace stockbook::databases
