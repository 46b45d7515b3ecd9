// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace stockbook::app {

// Prepares the program for being ended from outside. A signal that asks it to go (Ctrl-C, a closed terminal, kill, a
// reader that went away) first removes the unfinished files and then ends it as usual; a file that grows beyond its
// limit is an error to the writer instead of the end of the program; and if the toolkit lets a lack of memory through,
// the program says so and exits with 1. A crash, too, takes the unfinished files with it. Signals that somebody has
// seen to already, or ignores, are left alone. Called once, by main.
void PrepareForTheEnd();

// Removes every file that an UnfinishedFile names. Allocates nothing and may be called by a signal handler.
void RemoveUnfinishedFiles();

// The name of a file that must not outlive the program as it is. Names longer than the system's paths, and those beyond
// the first few at a time, are not kept.
class UnfinishedFile {
 public:
  explicit UnfinishedFile(const std::string& path);
  ~UnfinishedFile();
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;

 private:
  static constexpr size_t kNone = static_cast<size_t>(-1);

  size_t place_ = kNone;
};

}  // namespace stockbook::app
