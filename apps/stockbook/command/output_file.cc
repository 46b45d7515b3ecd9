// SPDX-License-Identifier: MIT
#include "stockbook/command/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <random>
#include <system_error>

#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const std::string& target, const std::string& reason, int code) {
  throw platform::Error("write", "Cannot write '" + target + "': " + reason + ".", code);
}

std::string Reason(int code) { return std::generic_category().message(code); }

// Ending signals wait as long as this lives.
class SignalPause {
 public:
  SignalPause() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, &before_);
  }
  ~SignalPause() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  SignalPause(const SignalPause&) = delete;
  SignalPause& operator=(const SignalPause&) = delete;

 private:
  sigset_t before_{};
};

// An open file of the system.
class Descriptor {
 public:
  Descriptor(const fs::path& path, int flags, mode_t mode = 0) : number_(open(path.c_str(), flags | O_CLOEXEC, mode)) {}
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  explicit operator bool() const { return number_ >= 0; }
  int number() const { return number_; }

 private:
  int number_;
};

// Gives the file the owner and mode of the one it replaces. Where it cannot have the same group, the group may do no
// more than everybody.
void TakeAfter(const Descriptor& file, const struct stat& replaced) {
  struct stat own {};
  if (fstat(file.number(), &own) != 0) return;
  mode_t mode = replaced.st_mode & 07777;
  const bool other_owner =
      own.st_uid != replaced.st_uid && fchown(file.number(), replaced.st_uid, static_cast<gid_t>(-1)) != 0;
  const bool other_group =
      own.st_gid != replaced.st_gid && fchown(file.number(), static_cast<uid_t>(-1), replaced.st_gid) != 0;
  if (other_group) mode &= ~static_cast<mode_t>(S_IRWXG) | ((mode & S_IRWXO) << 3);
  if (other_owner || other_group) mode &= ~static_cast<mode_t>(S_ISUID | S_ISGID);
  fchmod(file.number(), mode);
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
  CreateBeside();
}

// A file with a new name beside the target: for its owner alone while it replaces another, which may be a secret.
void PendingFile::CreateBeside() {
  std::error_code ignored;
  const mode_t mode = fs::exists(target_, ignored) ? 0600 : 0666;
  std::random_device random;
  for (int attempt = 0; attempt < 100; ++attempt) {
    fs::path candidate = target_;
    candidate += ".new-" + std::to_string(random());
    const SignalPause pause;
    if (const Descriptor file(candidate, O_WRONLY | O_CREAT | O_EXCL, mode); file) {
      temporary_ = candidate;
      unfinished_.emplace(temporary_.string());
      return;
    }
    if (errno != EEXIST) Fail(target_name_, Reason(errno), errno);
  }
  Fail(target_name_, "no free name for a temporary file in its folder", EEXIST);
}

PendingFile::~PendingFile() {
  std::error_code ignored;
  if (!temporary_.empty()) fs::remove(temporary_, ignored);
}

// Puts all of the file on the disk.
void PendingFile::Keep() const {
  const Descriptor file(temporary_, O_RDONLY);
  if (!file) Fail(target_name_, Reason(errno), errno);
  struct stat replaced {};
  if (stat(target_.c_str(), &replaced) == 0) TakeAfter(file, replaced);
  if (fsync(file.number()) != 0) Fail(target_name_, Reason(errno), errno);
}

void PendingFile::Commit() {
  Keep();
  std::error_code error;
  fs::rename(temporary_, target_, error);
  if (error) Fail(target_name_, error.message(), error.value());
  unfinished_.reset();
  temporary_.clear();
  // Some file systems cannot do this for a folder; the file is in place all the same.
  const fs::path folder = target_.has_parent_path() ? target_.parent_path() : fs::path(".");
  if (const Descriptor place(folder, O_RDONLY | O_DIRECTORY); place) fsync(place.number());
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
