// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace stockbook::window {

using Clock = std::chrono::steady_clock;

// A program that runs beside the test, with a pipe into its standard input and one out of its standard output. The
// destructor ends it by its process id.
class Process {
 public:
  using Variables = std::vector<std::pair<std::string, std::string>>;

  // The program is looked up in PATH; its standard error is discarded.
  Process(const std::vector<std::string>& command, const Variables& variables);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  // False when the program has gone.
  bool WriteLine(const std::string& line);
  // The next line, or nothing if none arrives before the deadline.
  std::optional<std::string> ReadLine(Clock::time_point until);
  // Waits for the program to end; returns its exit code, or -1 if it was killed or is still running.
  int Wait(Clock::time_point until);

 private:
  void Start(const std::vector<std::string>& command, const Variables& variables);

  pid_t pid_ = -1;
  int input_ = -1;
  int output_ = -1;
  std::string unread_;
};

// Whether PATH has a program of the name.
bool IsInstalled(const std::string& program);

}  // namespace stockbook::window
