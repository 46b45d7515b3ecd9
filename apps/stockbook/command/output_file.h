// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "stockbook/command/program_end.h"

namespace stockbook::app {

// A file that is written under a temporary name beside its target and takes the target's place at Commit, with the mode
// and, where possible, the owner of the file it replaces; without that it is removed. So the target has either its old
// content or all of the new one, at whatever moment the program is killed or the machine stops.
class PendingFile {
 public:
  // Creates the empty temporary file; throws platform::Error if the folder does not allow it.
  explicit PendingFile(const std::string& target);
  ~PendingFile();
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;

  const std::string& target() const { return target_name_; }
  // The file that is replaced: the target, or what the target is a link to.
  std::string place() const { return target_.string(); }
  // The file to write to.
  std::string path() const { return temporary_.string(); }
  // Throws platform::Error if the file cannot be written to the disk or moved into place.
  void Commit();

 private:
  void CreateBeside();
  void Keep() const;

  std::string target_name_;
  std::filesystem::path target_;
  std::filesystem::path temporary_;
  std::optional<UnfinishedFile> unfinished_;
};

// The output of a command: a PendingFile's stream, or standard output for "-". An existing target that is not a regular
// file (a pipe, a device) is written directly, because it cannot be replaced.
class OutputFile {
 public:
  // `out` is the stream for "-" and must outlive this object.
  OutputFile(const std::string& target, std::ostream& out);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  std::ostream& stream() { return *stream_; }
  // Flushes everything and moves the file into place; throws platform::Error if anything could not be written.
  void Commit();

 private:
  std::string target_;
  std::optional<PendingFile> pending_;
  std::ofstream file_;
  std::ostream* stream_;
};

}  // namespace stockbook::app
