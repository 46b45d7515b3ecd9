// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <functional>

#include "databases/execution/interruption.h"

namespace stockbook::databases {

// A copy of this process that does one thing and sends what comes of it through a pipe. A crash ends the copy alone; so
// does using more processor time or memory than it is given. The copy has no files of this process open, prints
// nothing, and runs no handler that the host has installed. It is stopped when its owner is destroyed.
class ReadingProcess {
 public:
  struct Limits {
    uint64_t processor_seconds = 0;
    uint64_t more_memory_bytes = 0;  // than the process has
    uint64_t sent_bytes = 0;
  };
  // `work` gets the end of the pipe to write to. Throws platform::Error when the system has no room for another
  // process.
  ReadingProcess(const std::function<void(int)>& work, const Limits& limits, const Interruption& interruption);
  ~ReadingProcess();
  ReadingProcess(const ReadingProcess&) = delete;
  ReadingProcess& operator=(const ReadingProcess&) = delete;

  // Waits for what comes next and takes up to `size` bytes of it; 0 at the end, or where it has sent more than it may.
  // Throws platform::Error once the work is cancelled or its time is up.
  size_t Read(char* bytes, size_t size);
  // Whether Read ended because nothing came for so long that nothing will: what another thread held when the process
  // was copied stays held in the copy.
  bool IsStuck() const { return stuck_; }

 private:
  bool WaitForBytes();
  void Stop();

  const Interruption& interruption_;
  uint64_t left_bytes_;
  pid_t process_ = -1;
  int process_handle_ = -1;
  int pipe_ = -1;
  bool stuck_ = false;
};

}  // namespace stockbook::databases
