// SPDX-License-Identifier: MIT
#include "stockbook/command/output_file.h"

#include <cerrno>
#include <cstdio>
#include <random>
#include <system_error>

#include "platform/error.h"

namespace stockbook::app {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const std::string& target, const std::string& reason, int code) {
  throw platform::Error("write", "Cannot write '" + target + "': " + reason + ".", code);
}

std::string Reason(int code) { return std::generic_category().message(code); }

// Creates a file with a new name beside the target, with the permissions of a new file.
fs::path CreateBeside(const fs::path& target, const std::string& target_name) {
  std::random_device random;
  for (int attempt = 0; attempt < 100; ++attempt) {
    fs::path candidate = target;
    candidate += ".new-" + std::to_string(random());
    if (std::FILE* file = std::fopen(candidate.c_str(), "wbx")) {
      std::fclose(file);
      return candidate;
    }
    if (errno != EEXIST) Fail(target_name, Reason(errno), errno);
  }
  Fail(target_name, "no free name for a temporary file in its folder", EEXIST);
}

bool IsWrittenThrough(const std::string& target) {
  std::error_code ignored;
  const fs::file_status status = fs::status(target, ignored);
  return fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
}

}  // namespace

PendingFile::PendingFile(const std::string& target) : target_name_(target), target_(target) {
  if (target.empty()) Fail(target, "it has no name", ENOENT);
  std::error_code error;
  const fs::file_status status = fs::status(target_, error);
  if (fs::is_directory(status)) Fail(target, "it is a folder; give the name of a file", EISDIR);
  if (fs::exists(status) && !fs::is_regular_file(status)) Fail(target, "it is no file on a disk", EINVAL);
  // A link is kept; the file it points to is replaced.
  if (fs::is_symlink(fs::symlink_status(target_, error)) && fs::exists(status)) target_ = fs::canonical(target_);
  temporary_ = CreateBeside(target_, target_name_);
}

PendingFile::~PendingFile() {
  std::error_code ignored;
  if (!temporary_.empty()) fs::remove(temporary_, ignored);
}

void PendingFile::Commit() {
  std::error_code error;
  fs::rename(temporary_, target_, error);
  if (error) Fail(target_name_, error.message(), error.value());
  temporary_.clear();
}

OutputFile::OutputFile(const std::string& target, std::ostream& out) : target_(target), stream_(&out) {
  if (target == "-") return;
  std::string path = target;
  if (!IsWrittenThrough(target)) path = pending_.emplace(target).path();
  file_.open(path, std::ios::binary | std::ios::trunc);
  if (!file_) Fail(target_, Reason(errno), errno);
  stream_ = &file_;
}

void OutputFile::Commit() {
  stream_->flush();
  if (file_.is_open()) file_.close();
  if (!*stream_) Fail(target_ == "-" ? "standard output" : target_, "the disk is full or the reader went away", EIO);
  if (pending_) pending_->Commit();
}

}  // namespace stockbook::app
