// SPDX-License-Identifier: MIT
#include "databases/desktop/copy_in_use.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

namespace stockbook::databases {

std::unique_ptr<CopyInUse> CopyInUse::Open(const std::string& path, Afterwards afterwards) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
  if (file < 0) return nullptr;
  struct stat found {};
  // Whoever clears copies away holds the lock while it does.
  if (flock(file, LOCK_SH) != 0 || fstat(file, &found) != 0 || found.st_nlink == 0) {
    close(file);
    return nullptr;
  }
  return std::unique_ptr<CopyInUse>(new CopyInUse(path, file, afterwards));
}

CopyInUse::~CopyInUse() {
  if (afterwards_ == Afterwards::kGoes) unlink(path_.c_str());
  close(file_);
}

bool CopyInUse::Publish(const std::string& path) {
  if (fsync(file_) != 0 || rename(path_.c_str(), path.c_str()) != 0) return false;
  path_ = path;
  afterwards_ = Afterwards::kStays;
  return true;
}

void CopyInUse::Discard() {
  unlink(path_.c_str());
  afterwards_ = Afterwards::kStays;
}

void RemoveUnusedCopy(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  if (file < 0) return;
  if (flock(file, LOCK_EX | LOCK_NB) == 0) unlink(path.c_str());
  close(file);
}

}  // namespace stockbook::databases
