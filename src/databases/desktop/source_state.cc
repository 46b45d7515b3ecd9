// SPDX-License-Identifier: MIT
#include "databases/desktop/source_state.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <thread>

#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

int64_t NanosecondsOf(const timespec& time) {
  return static_cast<int64_t>(time.tv_sec) * 1'000'000'000 + static_cast<int64_t>(time.tv_nsec);
}

std::string WhyUnseen(const std::string& file, int code) {
  switch (code) {
    case ENOENT:
    case ENOTDIR:
      return "找不到数据库文件“" + file + "”，请检查路径";
    case EACCES:
    case EPERM:
      return "没有查看数据库文件“" + file + "”的权限，请检查文件和文件夹的权限";
    default:
      return "无法读取数据库文件“" + file + "”，请检查磁盘或网络：" + std::strerror(code);
  }
}

}  // namespace

SourceState StateOf(const std::string& file, const char* operation) {
  const auto refuse = [&](const std::string& reason, int code) {
    return platform::Error(operation, reason, code, platform::ErrorKind::kInputOutput);
  };
  struct stat found {};
  if (stat(file.c_str(), &found) != 0) throw refuse(WhyUnseen(file, errno), errno);
  if (S_ISDIR(found.st_mode)) throw refuse("“" + file + "”是文件夹，不是数据库文件", EISDIR);
  if (!S_ISREG(found.st_mode)) throw refuse("“" + file + "”是管道、设备或套接字，不是数据库文件", EINVAL);
  return {static_cast<uint64_t>(found.st_dev), static_cast<uint64_t>(found.st_ino),
          static_cast<uint64_t>(found.st_size), NanosecondsOf(found.st_mtim), NanosecondsOf(found.st_ctim)};
}

void WaitUntilChangesShow(const SourceState& state) {
  constexpr int64_t kCoarsestTickNs = 10'000'000;
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  const int64_t age = NanosecondsOf(now) - std::max(state.modified_ns, state.changed_ns);
  // A time in the future is of another machine's clock, or of somebody who set it.
  if (age < 0 || age >= kCoarsestTickNs) return;
  std::this_thread::sleep_for(std::chrono::nanoseconds(kCoarsestTickNs - age));
}

}  // namespace stockbook::databases
