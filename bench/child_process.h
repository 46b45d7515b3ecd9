// SPDX-License-Identifier: MIT
#pragma once

#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <type_traits>

namespace stockbook::bench {

// Processor time of this process, so that other programs on the machine do not matter.
inline double CpuSeconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Time on the clock. Other programs on the machine do matter.
inline double ElapsedSeconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Resident memory of this process in bytes.
inline double ResidentBytes() {
  long pages = 0;
  std::FILE* file = std::fopen("/proc/self/statm", "r");
  if (file == nullptr || std::fscanf(file, "%*d %ld", &pages) != 1) pages = 0;
  if (file != nullptr) std::fclose(file);
  return static_cast<double>(pages) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

// Runs `work` in a process of its own and returns its plain result, so that process-wide settings and leftover memory
// of one measurement do not affect the next.
template <typename Work>
auto InChild(Work work) {
  using Result = decltype(work());
  static_assert(std::is_trivially_copyable_v<Result>);
  int ends[2] = {};
  if (pipe(ends) != 0) std::exit(1);
  std::fflush(nullptr);
  const pid_t child = fork();
  Result result{};
  if (child == 0) {
    result = work();
    _exit(write(ends[1], &result, sizeof result) == static_cast<ssize_t>(sizeof result) ? 0 : 1);
  }
  close(ends[1]);
  const bool arrived = read(ends[0], &result, sizeof result) == static_cast<ssize_t>(sizeof result);
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (!arrived || status != 0) {
    std::fprintf(stderr, "A measurement failed.\n");
    std::exit(1);
  }
  return result;
}

}  // namespace stockbook::bench
