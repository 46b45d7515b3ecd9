// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <utility>

namespace stockbook::databases {

// A copy that a connection uses, marked as in use until this is destroyed, so that no other process clears it away. One
// that is for one connection alone goes with it.
class CopyInUse {
 public:
  enum class Afterwards { kStays, kGoes };

  // Nothing when there is no such file, or it was just cleared away.
  static std::unique_ptr<CopyInUse> Open(const std::string& path, Afterwards afterwards);
  ~CopyInUse();
  CopyInUse(const CopyInUse&) = delete;
  CopyInUse& operator=(const CopyInUse&) = delete;

  const std::string& path() const { return path_; }
  // Puts what was written onto the disk and gives the copy its name, under which it stays; false where it cannot.
  bool Publish(const std::string& path);
  // For a copy that turned out not to be readable: nobody finds it any more.
  void Discard();

 private:
  CopyInUse(std::string path, int file, Afterwards afterwards)
      : path_(std::move(path)), file_(file), afterwards_(afterwards) {}

  std::string path_;
  int file_;
  Afterwards afterwards_;
};

// Removes the file unless somebody uses it.
void RemoveUnusedCopy(const std::string& path);

}  // namespace stockbook::databases
