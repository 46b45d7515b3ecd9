// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace stockbook::app {

// The program on a terminal of its own, as somebody has it who types its commands. The destructor kills it by its
// process id.
class TerminalRun {
 public:
  explicit TerminalRun(const std::vector<std::string>& arguments);
  ~TerminalRun();
  TerminalRun(const TerminalRun&) = delete;
  TerminalRun& operator=(const TerminalRun&) = delete;

  // Waits until the terminal has shown the text; false if the program ends, or minutes pass, without it.
  bool WaitFor(const std::string& text);
  void Type(const std::string& keys) const;
  // Waits for the end and returns the exit code, -1 if there is none.
  int Wait();

  // All that the terminal has shown, echoes included.
  const std::string& shown() const { return shown_; }
  // What the system's list of programs shows of it.
  std::string Listed() const;

 private:
  bool ReadMore();

  pid_t pid_ = -1;
  int terminal_ = -1;
  std::string shown_;
};

}  // namespace stockbook::app
