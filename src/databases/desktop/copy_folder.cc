// SPDX-License-Identifier: MIT
#include "databases/desktop/copy_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

#include "databases/desktop/copy_writer.h"

namespace stockbook::databases {
namespace {

namespace fs = std::filesystem;

// Another one for every change of what is written into a copy.
constexpr int kCopyingVersion = 1;
constexpr uint64_t kMostKeptBytes = uint64_t{4} << 30;
constexpr std::string_view kUnfinished = "unfinished-";
constexpr std::string_view kPrivate = "stockbook-desktop-";

// FNV-1a. A path alone is told apart by it, and then file and state are compared in full.
uint64_t HashOf(const std::string& text) {
  uint64_t hash = 0xCBF29CE484222325;
  for (const char byte : text) hash = (hash ^ static_cast<uint8_t>(byte)) * 0x100000001B3;
  return hash;
}

std::string CanonicalPath(const std::string& file) {
  std::error_code error;
  const fs::path path = fs::canonical(file, error);
  return error ? file : path.string();
}

// What the names of all copies of a file begin with.
std::string PrefixOf(const std::string& file) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "desktop-%d-%016llx-", kCopyingVersion,
                static_cast<unsigned long long>(HashOf(CanonicalPath(file))));
  return text.data();
}

// Should somebody clear the file away before it is marked as in use, another one is made.
std::unique_ptr<CopyInUse> NewCopyLike(const std::string& beginning) {
  for (;;) {
    std::string name = beginning + "XXXXXX";
    const int file = mkostemp(name.data(), O_CLOEXEC);
    if (file < 0) {
      const int code = errno;
      throw CannotWriteCopy("Open", "无法建立临时文件“" + name + "”，请检查磁盘空间和权限：" + std::strerror(code),
                            code, platform::ErrorKind::kInputOutput);
    }
    close(file);
    if (auto copy = CopyInUse::Open(name, CopyInUse::Afterwards::kGoes)) return copy;
  }
}

// Whether it is a folder of this user that nobody else may change or look into.
bool MakeOwn(const std::string& path) {
  if (mkdir(path.c_str(), 0700) != 0 && errno != EEXIST) return false;
  struct stat found {};
  if (lstat(path.c_str(), &found) != 0 || !S_ISDIR(found.st_mode) || found.st_uid != geteuid()) return false;
  return (found.st_mode & 0777) == 0700 || chmod(path.c_str(), 0700) == 0;
}

struct KeptFile {
  std::string path;
  std::string name;
  uint64_t bytes = 0;
  int64_t used_seconds = 0;
};

std::vector<KeptFile> FilesOf(const std::string& folder) {
  std::vector<KeptFile> files;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    struct stat found {};
    const std::string path = entry->path().string();
    if (lstat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode) || found.st_uid != geteuid()) continue;
    files.push_back({path, entry->path().filename().string(), static_cast<uint64_t>(found.st_size),
                     std::max<int64_t>(found.st_atime, found.st_mtime)});
  }
  return files;
}

// A path that leads nowhere any more; one behind a door that is shut for now may come back.
bool IsGone(const std::string& source) {
  std::error_code error;
  return source.empty() || (!fs::exists(source, error) && !error);
}

}  // namespace

std::optional<CopyFolder> CopyFolder::OfUser() {
  const auto setting = [](const char* name) {
    const char* value = std::getenv(name);
    return std::string(value == nullptr || value[0] != '/' ? "" : value);
  };
  std::string cache = setting("XDG_CACHE_HOME");
  if (cache.empty()) {
    if (setting("HOME").empty()) return std::nullopt;
    cache = setting("HOME") + "/.cache";
  }
  std::error_code error;
  if (!fs::exists(cache, error) && mkdir(cache.c_str(), 0700) != 0 && errno != EEXIST) return std::nullopt;
  const std::string folder = cache + "/stockbook";
  if (!MakeOwn(folder)) return std::nullopt;
  return CopyFolder(folder);
}

std::string CopyFolder::PathOf(const std::string& file, const SourceState& state) const {
  std::array<char, 128> text{};
  std::snprintf(text.data(), text.size(), "%llx-%llx-%llx-%llx-%llx.db", static_cast<unsigned long long>(state.device),
                static_cast<unsigned long long>(state.inode), static_cast<unsigned long long>(state.bytes),
                static_cast<unsigned long long>(state.modified_ns), static_cast<unsigned long long>(state.changed_ns));
  return path_ + "/" + PrefixOf(file) + text.data();
}

std::unique_ptr<CopyInUse> CopyFolder::NewCopy() const { return NewCopyLike(path_ + "/" + std::string(kUnfinished)); }

void CopyFolder::ClearAway(const std::string& file, const std::string& path_to_keep) const {
  std::vector<KeptFile> files = FilesOf(path_);
  const std::string prefix = PrefixOf(file);
  uint64_t kept_bytes = 0;
  std::sort(files.begin(), files.end(),
            [](const KeptFile& left, const KeptFile& right) { return left.used_seconds > right.used_seconds; });
  for (const KeptFile& kept : files) {
    kept_bytes += kept.bytes;
    if (kept.path == path_to_keep) continue;
    const bool unfinished = kept.name.starts_with(kUnfinished);
    // Whoever writes one holds its lock as well.
    if (unfinished || kept.name.starts_with(prefix) || kept_bytes > kMostKeptBytes || IsGone(SourceOfCopy(kept.path)))
      RemoveUnusedCopy(kept.path);
  }
}

std::unique_ptr<CopyInUse> NewPrivateCopy() {
  std::error_code error;
  fs::path folder = fs::temp_directory_path(error);
  if (error) folder = "/tmp";
  for (const KeptFile& left : FilesOf(folder.string())) {
    if (left.name.starts_with(kPrivate)) RemoveUnusedCopy(left.path);
  }
  return NewCopyLike(folder.string() + "/" + std::string(kPrivate));
}

}  // namespace stockbook::databases
