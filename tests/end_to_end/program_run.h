// SPDX-License-Identifier: MIT
#pragma once

#include <sys/resource.h>
#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace stockbook::end_to_end {

// A bound that the system sets to a program: of its memory or of the files it writes, in bytes.
struct Limit {
  decltype(RLIMIT_AS) what = RLIMIT_AS;
  rlim_t bytes = RLIM_INFINITY;
};

enum class Streams { kUsual, kClosed };

// The program running beside the test, with a pipe into its standard input. Its standard output is discarded, its
// standard error goes to a file; or all three are closed. The destructor kills it by its process id.
class ProgramRun {
 public:
  ProgramRun(const std::vector<std::string>& arguments, const std::string& error_file,
             const std::optional<Limit>& limit = std::nullopt, Streams streams = Streams::kUsual);
  ~ProgramRun();
  ProgramRun(const ProgramRun&) = delete;
  ProgramRun& operator=(const ProgramRun&) = delete;

  void Write(const std::string& text) const;
  void CloseInput();
  void Send(int signal) const;
  // The file that the program has open under the number; "" if it is closed.
  std::string FileOf(int descriptor) const;
  // The status of the program that has ended, as wait tells it. A program that hangs is killed after minutes.
  int Wait();

 private:
  pid_t pid_ = -1;
  int input_ = -1;
};

}  // namespace stockbook::end_to_end
