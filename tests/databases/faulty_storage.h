// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

#include <memory>

namespace stockbook::testing {

// What happens to a call. The disk refuses to read, once or from then on; it gives less than was asked for, or the
// right first half and zeros or other bytes behind it; or it refuses one of the calls that are not reads: opening,
// size, locks, whether a file exists, shared memory.
enum class Fault { kNone, kRefusedRead, kRefusedReads, kShortRead, kHalfOfZeros, kHalfOfOtherBytes, kRefusedCall };

// Stands between SQLite and the files of the process while it lives: every connection that is opened meanwhile reads
// through it, and must be closed before it goes. Connections that are open already do not notice. One at a time.
class FaultyStorage {
 public:
  FaultyStorage();
  ~FaultyStorage();
  FaultyStorage(const FaultyStorage&) = delete;
  FaultyStorage& operator=(const FaultyStorage&) = delete;

  // The n-th call from now on, counting from 1 those that the fault can happen to, meets it.
  void Arm(Fault fault, int call);
  // No more faults; returns whether the last one has happened.
  bool Disarm();
  // Since the last Arm: those that the fault could have happened to.
  int Calls() const;
  // Open through this storage.
  int OpenFiles() const;

  struct State;

 private:
  std::unique_ptr<State> state_;
};

}  // namespace stockbook::testing
