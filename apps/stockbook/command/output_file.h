// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace stockbook::app {

// A file that is written under a temporary name beside its target and takes the target's place at Commit; without one
// it is removed. So the target holds what it held before or the whole new content, never a half.
class PendingFile {
 public:
  // Creates the empty temporary file; throws platform::Error when the folder does not let it.
  explicit PendingFile(const std::string& target);
  ~PendingFile();
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;

  const std::string& target() const { return target_name_; }
  // Where to write.
  std::string path() const { return temporary_.string(); }
  void Commit();

 private:
  std::string target_name_;
  std::filesystem::path target_;
  std::filesystem::path temporary_;
};

// The output of a command: a PendingFile's stream, or standard output for "-". What exists and is no regular file
// (a pipe, a device) is written straight through, since it cannot be replaced.
class OutputFile {
 public:
  // `out` is what "-" means; it must live as long.
  OutputFile(const std::string& target, std::ostream& out);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  std::ostream& stream() { return *stream_; }
  // Writes out everything and puts the file in its place; throws platform::Error when anything could not be written.
  void Commit();

 private:
  std::string target_;
  std::optional<PendingFile> pending_;
  std::ofstream file_;
  std::ostream* stream_;
};

}  // namespace stockbook::app
