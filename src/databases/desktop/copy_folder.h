// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "databases/desktop/copy_in_use.h"
#include "databases/desktop/source_state.h"

namespace stockbook::databases {

// The folder of the user's cache where copies of desktop files are kept, for the user's eyes alone: the folder has the
// rights 0700, its files 0600. The name of a copy says what it is of: which file, in which state, made by which version
// of the copying. So a copy is never out of date, only unused.
class CopyFolder {
 public:
  // $XDG_CACHE_HOME/stockbook or ~/.cache/stockbook, made where it is missing. Nothing where there is none that only
  // the user can change.
  static std::optional<CopyFolder> OfUser();

  // Where a copy of the file in this state is, or would be. `file` may be written in any way that leads to it.
  std::string PathOf(const std::string& file, const SourceState& state) const;
  // An empty file of the folder under a name that nothing else has, which goes unless it is published. Throws
  // CannotWriteCopy.
  std::unique_ptr<CopyInUse> NewCopy() const;
  // Removes what nobody uses: copies of files that are gone, of other states of `file`, what a process that crashed
  // left half written, and the copies not used for longest as far as all of them take up too much.
  void ClearAway(const std::string& file, const std::string& path_to_keep) const;

  const std::string& path() const { return path_; }

 private:
  explicit CopyFolder(std::string path) : path_(std::move(path)) {}
  std::string path_;
};

// An empty file of its own among the system's temporary files, rights 0600. Clears away what processes that crashed
// left there. Throws CannotWriteCopy.
std::unique_ptr<CopyInUse> NewPrivateCopy();

}  // namespace stockbook::databases
